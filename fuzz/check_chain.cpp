// The whole chain: the bytes of a member file -> reading -> the check to the design code -> JSON, text, calculation sheet. What
// an engineer relies on must hold for every input: a pass is one, the parts agree with the whole, and every output says the
// same.
#include <algorithm>
#include <cmath>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "Fuzz.h"
#include "check/FindingsJson.h"
#include "commands/CheckFindings.h"
#include "io/Failure.h"
#include "keltrix/bs5950/SteelMemberBS5950.h"
#include "report/HtmlReader.h"
#include "report/HtmlReport.h"
#include "text/Json.h"
#include "text/Text.h"

using namespace Keltrix;
using namespace Keltrix::App;

namespace {

// The member as the standard's own class.
const Keltrix::BS5950::CSteelMemberBS5950& StandardOf(const Keltrix::Host::CheckedMember& checked)
{
    return dynamic_cast<const Keltrix::BS5950::CSteelMemberBS5950&>(*checked.coded);
}

// The input at hand, for what is reported of a failure.
CString g_input;

// `detail` is text, or a number; nothing is made of it where the law holds.
void Require(bool holds, const char* what, std::string_view detail = {})
{
    if (!holds) Fuzz::Require(false, what, g_input, CString::FromUtf8(detail).value_or(CString()));
}

void Require(bool holds, const char* what, double value)
{
    if (!holds) Require(false, what, Shortest(value));
}

MemberPiece Whole(std::string_view bytes)
{
    MemberPiece piece;
    piece.bytes = bytes;
    piece.isWhole = true;
    return piece;
}

// --- what a check found ------------------------------------------------------------------------------------------------

// A member passes only where everything that was found passes.
void RequireHonestPass(const CheckedMember& checked)
{
    if (checked.Status() != "pass") return;
    const double overall = checked.result->UtilOverAll();
    Require(std::isfinite(overall) && overall <= 1.0, "a pass is a finite utilisation of at most 1", overall);
    Require(!checked.result->HasFailed(), "a member that passes has no flag of a failure");
    const auto& member = StandardOf(checked);
    Require(!member.Checks().IsOpen(), "no rule that applies to a member that passes was left out");
    Require(!member.Positions().empty(), "a member that passes has positions that were checked");
    for (const BS5950::PositionResult& p : member.Positions())
        Require(std::isfinite(p.Largest()) && p.Largest() <= 1.0, "every position of a member that passes does so");
    for (const BS5950::SpanResult& s : member.Spans())
        Require(!s.applied || (std::isfinite(s.utilisation) && s.utilisation <= 1.0),
                "every span of a member that passes does so");
    for (const BS5950::InteractionResult& i : member.Interactions())
        Require(std::isfinite(i.utilisation) && i.utilisation <= 1.0,
                "every interaction of a member that passes does so");
    for (const BS5950::LedgerEntry& e : member.Checks().Entries())
        Require(e.status != BS5950::CheckStatus::Failed && e.status != BS5950::CheckStatus::NotEvaluated,
                "every rule of a member that passes has passed, or does not apply");
}

// The extremes of the moment diagram hold the moment of every position.
void RequireMoments(const CheckedMember& checked)
{
    const Design::Extremes& m = checked.momentMajor;
    const double slack = 1e-9 * std::max(std::abs(m.greatest), std::abs(m.least)) + 1e-9;
    for (const BS5950::PositionResult& p : StandardOf(checked).Positions()) {
        if (!std::isfinite(p.actions.Mx)) continue;
        Require(!(p.actions.Mx > m.greatest + slack) && !(p.actions.Mx < m.least - slack),
                "no position has a moment beyond the extremes", p.actions.Mx);
    }
}

// Every rule has its entry, and none says anything but what the record says.
void RequireAgreement(const CheckedMember& checked)
{
    using BS5950::CheckStatus;
    const BS5950::Ledger& ledger = StandardOf(checked).Checks();
    double largest = 0.0;
    bool failed = false;
    for (int rule = 0; rule < static_cast<int>(BS5950::Rule::COUNT); ++rule)
        Require(ledger.Find(static_cast<BS5950::Rule>(rule)) != nullptr, "every rule has an entry", rule);
    for (const BS5950::LedgerEntry& e : ledger.Entries()) {
        Require(e.utilisation >= 0.0, "a utilisation is a number of at least 0");
        const bool done = e.status == CheckStatus::Passed || e.status == CheckStatus::Failed;
        Require(done || e.utilisation == 0.0, "a rule that was not evaluated has no utilisation");
        Require(e.status != CheckStatus::Passed || e.utilisation <= 1.0, "a rule passes up to 1");
        Require(done || *e.reason, "a rule that was not evaluated says why");
        largest = std::max(largest, e.utilisation);
        failed = failed || e.status == CheckStatus::Failed;
    }
    const double overall = checked.result->UtilOverAll();
    Require(largest == overall, "the largest entry is the utilisation of the member", overall);
    Require(!failed || checked.Status() == "fail", "a rule that failed fails the member");
    const BS5950::LedgerEntry* const governing = ledger.Governing();
    Require(governing ? governing->utilisation == largest : largest == 0.0, "what governs is the largest entry");
}

// --- what is put out ---------------------------------------------------------------------------------------------------

// No character that a terminal or a browser would obey. JSON is for programs: there the controls from U+007F on are text.
enum class Reader { Person, Program };

void RequireNoControls(std::string_view text, Reader reader, const char* what)
{
    while (!text.empty()) {
        const CodePoint c = FirstCodePoint(text);
        const bool isLow = c.value < 0x20 && c.value != '\n' && c.value != '\t';
        const bool isHigh = c.value >= 0x7F && c.value < 0xA0;
        Require(!isLow && !(isHigh && reader == Reader::Person), what, text.substr(0, 40));
        Require(c.value != 0xFFFD || text.starts_with("\xEF\xBF\xBD"), "output is UTF-8", what);
        text.remove_prefix(c.length);
    }
}

void RequireSame(const Json& json, double value, const char* what)
{
    const bool same = std::isfinite(value) ? json.is_number() && json.get<double>() == value : json.is_null();
    Require(same, what, value);
}

// The JSON of a member reads back to the figures of the check.
void RequireJson(const CheckedMember& checked)
{
    const std::string line = FindingsLine(checked);
    RequireNoControls(line, Reader::Program, "JSON has no control characters");
    const Json json = Json::parse(line, nullptr, false);
    Require(!json.is_discarded(), "JSON is strict", line);
    RequireSame(json["overall"], checked.result->UtilOverAll(), "JSON has the member's utilisation");
    Require(json["status"] == checked.Status(), "JSON has the member's status");
    Require(json["warnings"].size() == checked.warnings.size(), "JSON has every warning");
    RequireSame(json["moments"]["major"]["greatest"], checked.momentMajor.greatest, "JSON has the greatest moment");
    RequireSame(json["moments"]["major"]["least"], checked.momentMajor.least, "JSON has the least moment");
    const auto& positions = StandardOf(checked).Positions();
    const Json& local = json["utilisation"]["local"];
    Require(local.size() == positions.size(), "JSON has every position");
    for (std::size_t i = 0; i < positions.size(); ++i) {
        const BS5950::PositionResult& p = positions[i];
        RequireSame(local[i]["position"], p.x, "JSON has the place of a position");
        RequireSame(local[i]["combined"], p.combined, "JSON has the figures of a position");
        RequireSame(local[i]["axial"], p.axial, "JSON has the figures of a position");
        RequireSame(local[i]["moment_major"], p.major, "JSON has the figures of a position");
        RequireSame(local[i]["moment_minor"], p.minor, "JSON has the figures of a position");
        RequireSame(local[i]["shear_major"], std::max(p.shearMajor, p.shearBuckling),
                    "JSON has the figures of a position");
        RequireSame(local[i]["shear_minor"], p.shearMinor, "JSON has the figures of a position");
    }
    std::vector<BS5950::LedgerEntry> entries = StandardOf(checked).Checks().Entries();
    const std::vector<BS5950::LedgerEntry> information = StandardOf(checked).InformationEntries();
    entries.insert(entries.end(), information.begin(), information.end());
    Require(json["checks"].size() == entries.size(), "JSON has every entry");
    for (std::size_t i = 0; i < entries.size(); ++i)
        RequireSame(json["checks"][i]["utilisation"], entries[i].utilisation, "JSON has the figures of an entry");
}

void RequireText(const CheckedMember& checked)
{
    for (const char* report : {"brief", "verbose"}) {
        CheckOptions options;
        options.report = report;
        RequireNoControls(PieceOf(checked, options).text, Reader::Person, "text has no control characters");
    }
}

void RequireSheet(const CheckedMember& checked)
{
    for (const bool isBrief : {false, true}) {
        TitleBlock block;
        block.isBrief = isBrief;
        const std::string html = "<article>" + MemberSheet(checked, block, "m1") + "</article>";
        RequireNoControls(html, Reader::Person, "a sheet has no control characters");
        const Trial::HtmlReader reader(html);
        Require(reader.Error().empty(), "a sheet is well-formed HTML", reader.Error());
    }
}

// --- the chain ---------------------------------------------------------------------------------------------------------

// False where the member is refused.
bool CheckOne(const MemberFile& file, std::size_t i)
{
    try {
        const CheckedMember checked = CheckMember(file, i, DefaultCode(), true);
        const CheckedMember again = CheckMember(file, i, DefaultCode(), false);
        const CheckedMember exact = CheckMember(file, i, {DefaultCode().code, {0, {1.0}}}, false);
        Require(FindingsLine(checked) == FindingsLine(again), "a second check without text finds the same");
        for (const CheckedMember* each : {&checked, &exact}) {
            RequireHonestPass(*each);
            RequireAgreement(*each);
            RequireMoments(*each);
            RequireJson(*each);
        }
        RequireText(checked);
        RequireSheet(checked);
    } catch (const BadInput&) {
        return false;
    }
    return true;
}

// All of a file as one piece.
class OnePiece : public PieceSource {
public:
    explicit OnePiece(MemberPiece piece) { m_piece.emplace().piece = std::move(piece); }
    std::optional<InputPiece> Next() override
    {
        if (m_piece) m_piece->name = "f";
        return std::exchange(m_piece, std::nullopt);
    }

private:
    std::optional<InputPiece> m_piece;
};

// The command's own stream brings one finding for each line between members that is an error and for each member, and refuses
// what the reading calls an error.
void RequireLoop(std::string_view bytes, const std::vector<bool>& accepted)
{
    CheckOptions options;
    options.format = Format::JSON_LINES;
    std::istringstream nothing;
    std::vector<bool> put;
    OnePiece whole(Whole(bytes));
    MemberFindings findings(options, whole, nothing);
    while (const auto piece = findings.Next()) {
        RequireNoControls(piece->text, piece->kind == OutputPiece::Message ? Reader::Person : Reader::Program,
                          "findings have no control characters");
        if (piece->kind == OutputPiece::Message) continue;
        Require(!Json::parse(piece->text, nullptr, false).is_discarded(), "JSON lines are strict");
        Require(piece->kind == OutputPiece::Member || piece->code == EXIT_BAD_INPUT, "what is refused is bad input");
        put.push_back(piece->kind == OutputPiece::Member);
    }
    Require(put == accepted, "every member is checked or refused, and refused where the reading calls it an error");
}

void CheckFile(std::string_view bytes)
{
    std::vector<bool> accepted;
    try {
        const MemberFile file("f", Whole(bytes));
        if (file.MemberCount() > 4) return;
        for (const Defect& defect : file.Check().defects)
            if (defect.severity == Severity::Error && defect.member == Defect::NO_MEMBER) accepted.push_back(false);
        for (std::size_t i = 0; i < file.MemberCount(); ++i) {
            Require(!file.Member(i).isRefused || file.Member(i).hasErrors, "what the reader refuses has an error");
            accepted.push_back(!file.Member(i).hasErrors && CheckOne(file, i));
        }
    } catch (const BadInput&) {
        accepted.assign(1, false);
    }
    RequireLoop(bytes, accepted);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes = Fuzz::Bytes(data, size);
    g_input = Fuzz::Text(bytes);
    CheckFile(bytes);
    return 0;
}
