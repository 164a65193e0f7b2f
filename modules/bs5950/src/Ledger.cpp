#include "keltrix/bs5950/Ledger.h"

#include <algorithm>
#include <array>

namespace Keltrix::BS5950 {

using Design::Topic;

namespace {

struct RuleRow {
    const wchar_t* name;
    const wchar_t* clause;
    Stage stage;
    Topic topic;
};

constexpr std::array<RuleRow, static_cast<std::size_t>(Rule::COUNT)> RULES{{
    {L"design strength", L"3.1.1", Stage::General, Topic::Other},
    {L"classification", L"3.5", Stage::Local, Topic::Other},
    {L"tension capacity", L"4.6.1", Stage::Local, Topic::Tension},
    {L"eccentric end connection of a tie", L"4.6.3", Stage::Local, Topic::Tension},
    {L"compression capacity of the cross-section", L"4.8.3.2", Stage::Local, Topic::Compression},
    {L"shear capacity along the web", L"4.2.3", Stage::Local, Topic::ShearMajor},
    {L"shear capacity along the flanges", L"4.2.3", Stage::Local, Topic::ShearMinor},
    {L"shear buckling of the web", L"4.4.5", Stage::Local, Topic::ShearBuckling},
    {L"least thickness of the web", L"4.4.3", Stage::Local, Topic::Other},
    {L"end anchorage of a web that buckles in shear", L"4.4.5.4", Stage::Local, Topic::Other},
    {L"transverse stiffeners of the web", L"4.4.6", Stage::Local, Topic::Other},
    {L"web bearing under concentrated loads", L"4.5.2", Stage::Local, Topic::WebForces},
    {L"web buckling under concentrated loads", L"4.5.3", Stage::Local, Topic::WebForces},
    {L"moment capacity, major axis", L"4.2.5", Stage::Local, Topic::BendingMajor},
    {L"moment capacity, minor axis", L"4.2.5", Stage::Local, Topic::BendingMinor},
    {L"bolt holes in the tension flange", L"4.2.5.5", Stage::Local, Topic::Other},
    {L"tension and moment", L"4.8.2", Stage::Local, Topic::CrossSection},
    {L"compression and moment, cross-section", L"4.8.3.2", Stage::Local, Topic::CrossSection},
    {L"torsion", L"none", Stage::Local, Topic::Torsion},
    {L"compression buckling, major axis", L"4.7.4", Stage::Buckling, Topic::BucklingMajor},
    {L"compression buckling, minor axis", L"4.7.4", Stage::Buckling, Topic::BucklingMinor},
    {L"end connections of a strut", L"4.7.10", Stage::Buckling, Topic::Other},
    {L"torsional and flexural-torsional buckling", L"4.7", Stage::Buckling, Topic::BucklingTorsional},
    {L"lateral-torsional buckling", L"4.3.6", Stage::Buckling, Topic::LateralTorsional},
    {L"member buckling under axial force and moment", L"4.8.3.3", Stage::Buckling, Topic::MemberInteraction},
    {L"sway stability and amplified moments", L"2.4.2", Stage::General, Topic::Other},
    {L"structural integrity", L"2.4.5", Stage::General, Topic::Other},
    {L"fatigue", L"2.4.3", Stage::General, Topic::Other},
    {L"brittle fracture", L"2.4.4", Stage::General, Topic::Other},
    {L"deflection", L"2.5.2", Stage::General, Topic::Deflection},
    {L"vibration", L"2.5.3", Stage::General, Topic::Other},
    {L"strength of the restraints", L"4.3.2, 4.3.3, 4.7.1.2", Stage::General, Topic::Other},
    {L"connections", L"section 6", Stage::General, Topic::Other},
    {L"web openings", L"4.15", Stage::General, Topic::Other},
    {L"laced, battened and back-to-back struts", L"4.7.8 to 4.7.13", Stage::General, Topic::Other},
    {L"restrained tension flange", L"Annex G", Stage::General, Topic::Other},
    {L"single angles under axial force and moment", L"I.4", Stage::General, Topic::Other},
    {L"column in simple construction", L"4.7.7", Stage::General, Topic::Other},
}};

const RuleRow& Row(Rule rule) { return RULES[static_cast<std::size_t>(rule)]; }

} // namespace

const wchar_t* RuleName(Rule rule) { return Row(rule).name; }

const wchar_t* RuleClause(Rule rule) { return Row(rule).clause; }

Stage RuleStage(Rule rule) { return Row(rule).stage; }

Topic RuleTopic(Rule rule) { return Row(rule).topic; }

void Ledger::Drop(Stage stage)
{
    std::erase_if(m_entries, [stage](const LedgerEntry& e) { return RuleStage(e.rule) == stage; });
}

void Ledger::MarkGoverning()
{
    LedgerEntry* best = nullptr;
    for (LedgerEntry& e : m_entries) {
        e.governing = false;
        if (Design::IsWorse(e.utilisation, best ? best->utilisation : 0.0)) best = &e;
    }
    if (best) best->governing = true;
}

const LedgerEntry* Ledger::Governing() const
{
    const auto it = std::find_if(m_entries.begin(), m_entries.end(), [](const LedgerEntry& e) { return e.governing; });
    return it == m_entries.end() ? nullptr : &*it;
}

const LedgerEntry* Ledger::Find(Rule rule) const
{
    const LedgerEntry* best = nullptr;
    for (const LedgerEntry& e : m_entries)
        if (e.rule == rule && (!best || e.utilisation > best->utilisation)) best = &e;
    return best;
}

bool Ledger::HasFailed() const { return HasFailed(Stage::Local) || HasFailed(Stage::Buckling); }

bool Ledger::HasFailed(Stage stage) const
{
    return std::any_of(m_entries.begin(), m_entries.end(), [stage](const LedgerEntry& e) {
        return RuleStage(e.rule) == stage && e.status == CheckStatus::Failed;
    });
}

bool Ledger::IsOpen() const { return IsOpen(Stage::General) || IsOpen(Stage::Local) || IsOpen(Stage::Buckling); }

bool Ledger::IsOpen(Stage stage) const
{
    return std::any_of(m_entries.begin(), m_entries.end(), [stage](const LedgerEntry& e) {
        return RuleStage(e.rule) == stage && e.status == CheckStatus::NotEvaluated;
    });
}

Design::Status Ledger::Status() const
{
    if (HasFailed()) return Design::Status::Failed;
    return m_entries.empty() || IsOpen() ? Design::Status::NotChecked : Design::Status::Passed;
}

} // namespace Keltrix::BS5950
