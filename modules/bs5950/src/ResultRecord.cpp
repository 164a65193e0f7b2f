#include "ResultRecord.h"

#include <algorithm>
#include <cmath>

namespace Keltrix::BS5950 {

using Steel::CMemberResult;

void WriteLoads(const MemberResults& found, CMemberResult& r)
{
    int loads = 0;
    for (const PositionResult& p : found.positions) {
        if (p.actions.F != 0.0) loads |= CMemberResult::LOAD_AXIAL;
        if (p.actions.Mx != 0.0 || p.actions.Fvy > 1.0) loads |= CMemberResult::LOAD_MAJOR;
        if (p.actions.My != 0.0 || p.actions.Fvx > 1.0) loads |= CMemberResult::LOAD_MINOR;
        if (std::abs(p.actions.Mt) > 1.0) loads |= CMemberResult::LOAD_TORSION;
    }
    r.SetLoadFlags(loads);
}

namespace {

// The record has no place of its own for webs: they are filed with the shear along the web, the least thickness with the first
// entry.
void WriteWebs(const MemberResults& found, int subSpans, CMemberResult& r)
{
    for (const LedgerEntry& e : found.ledger.Entries()) {
        if (e.rule != Rule::WebThickness || !(e.utilisation > 0.0)) continue;
        r.SetCurSubSpan(1);
        r.SetUtilLocalShearMajor(e.utilisation);
    }
    for (const WebLoadResult& w : found.webLoads) {
        r.SetCurSubSpan(w.Entry(subSpans));
        r.SetUtilLocalShearMajor(std::max(w.force / w.Pbw, w.held ? w.force / w.Px : 0.0));
    }
}

void NoteOpen(const MemberResults& found, Stage stage, CMemberResult& r)
{
    if (found.ledger.IsOpen(stage)) r.AddFlags(CMemberResult::NOT_CHECKED);
}

} // namespace

void WriteLocal(const MemberResults& found, int subSpans, CMemberResult& r)
{
    for (const PositionResult& p : found.positions) {
        r.SetCurSubSpan(p.Entry());
        r.SetUtilLocalAxial(p.axial);
        r.SetUtilLocalMomMajor(p.major);
        r.SetUtilLocalMomMinor(p.minor);
        r.SetUtilLocalShearMajor(std::max(p.shearMajor, p.shearBuckling));
        r.SetUtilLocalShearMinor(std::max(p.shearMinor, p.shearBucklingX));
        r.SetUtilLocalCombined(p.combined);
        if (p.cls.webSlender) r.AddFlags(CMemberResult::INFO_LOCAL_SLENDER_WEB);
        if (p.cls.flangeSlender) r.AddFlags(CMemberResult::INFO_LOCAL_SLENDER_FLANGE);
    }
    WriteWebs(found, subSpans, r);
    NoteOpen(found, Stage::Local, r);
}

void WriteBuckling(const MemberResults& found, int subSpans, CMemberResult& r)
{
    r.SetCurSubSpan(2 * subSpans + 1);
    for (const SpanResult& span : found.spans) {
        if (!span.applied) continue;
        switch (span.mode) {
        case BucklingMode::Major:
            r.SetUtilBucklingAxialMajor(span.utilisation);
            break;
        case BucklingMode::Minor:
            r.SetUtilBucklingAxialMinor(span.utilisation);
            break;
        case BucklingMode::LateralTorsional:
            r.SetUtilBucklingLT(span.utilisation);
            break;
        }
        if (span.mode != BucklingMode::LateralTorsional && span.slenderness > 180.0)
            r.AddFlags(CMemberResult::INFO_MEMBER_SLENDER);
    }
    for (const InteractionResult& i : found.interactions)
        r.SetUtilBucklingCombined(i.utilisation);
    for (const AcrossResult& a : found.across) {
        if (a.open) continue;
        r.SetUtilBucklingLT(a.utilisation);
        if (a.combined > 0.0) r.SetUtilBucklingCombined(a.combined);
    }
    NoteOpen(found, Stage::Buckling, r);
}

} // namespace Keltrix::BS5950
