#include "memberfile/MemberFile.h"

#include <algorithm>

#include "keltrix/platform/KxUtil.h"
#include "text/Fields.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

SourceText Decode(const std::string& name, const MemberPiece& piece)
{
    if (piece.isTooLarge) {
        throw BadInput(name + ':' + std::to_string(piece.FirstLine()) + ": no END line in " +
                       std::to_string(LARGEST_FILE >> 20) +
                       " MiB, so this is no member; skipped up to the next END line");
    }
    return DecodeText(name, piece.bytes, piece.start);
}

// The note that further defects were not listed is about none.
bool IsListed(const Defect& defect) { return !defect.got.empty() || !defect.expected.empty(); }

} // namespace

MemberFile::MemberFile(SourceText source, const ReadingOptions& options, LineNumber firstLine, bool isAfterEnd,
                       bool isWhole) :
    m_name(std::move(source.name)),
    m_text(std::make_unique<const CString>(std::move(source.text))), m_reading(options),
    m_check(CheckMemberFile(*m_text, options, firstLine, isAfterEnd)), m_isWhole(isWhole)
{}

MemberFile::MemberFile(std::string name, const MemberPiece& piece, const ReadingOptions& options) :
    MemberFile(Decode(name, piece), options, piece.FirstLine(), piece.isBehindEnd, piece.isWhole)
{}

MemberFile::MemberFile(SourceText source, const ReadingOptions& options) :
    MemberFile(std::move(source), options, 1, false, true)
{}

std::string MemberFile::NameOf(std::size_t i) const
{
    return m_isWhole && MemberCount() == 1 ? m_name : m_name + ':' + std::to_string(Member(i).firstLine);
}

std::vector<std::string> MemberFile::ErrorsOf(std::size_t i) const
{
    std::vector<std::string> errors;
    for (const Defect& defect : m_check.DefectsOf(i))
        if (defect.severity == Severity::Error && IsListed(defect)) errors.push_back(defect.Text(m_name));
    return errors;
}

std::vector<std::string> MemberFile::UnlistedErrorsOf(std::size_t i) const
{
    std::vector<std::string> errors;
    const MemberText& member = Member(i);
    for (const Defect& defect : CheckMemberFile(CString(member.text), m_reading, member.firstLine, true).defects)
        if (defect.severity == Severity::Error) errors.push_back(defect.Text(m_name));
    return errors;
}

std::vector<MemberWarning> MemberFile::WarningsOf(std::size_t i) const
{
    std::vector<MemberWarning> warnings;
    for (const Defect& defect : m_check.DefectsOf(i)) {
        if (defect.severity != Severity::Error) warnings.push_back(WarningOf(defect, m_name));
    }
    return warnings;
}

void MemberFile::Add(Defect defect)
{
    if (defect.severity == Severity::Error) m_check.members[defect.member].hasErrors = true;
    const auto at = std::upper_bound(m_check.defects.begin(), m_check.defects.end(), defect,
                                     [](const Defect& a, const Defect& b) { return a.line < b.line; });
    m_check.defects.insert(at, std::move(defect));
}

std::pair<LineNumber, std::wstring_view> MemberFile::Find(std::size_t i, LineKind kind) const
{
    std::wstring_view rest = Member(i).text;
    for (LineNumber line = Member(i).firstLine; !rest.empty(); ++line) {
        const std::size_t end = std::min(rest.find(L'\n'), rest.size());
        std::wstring_view text = rest.substr(0, end);
        if (LineKindOf(GetSubString(text)) == kind) return {line, text};
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return {Member(i).firstLine, {}};
}

LineNumber MemberFile::LineOf(std::size_t i, const std::string& keyword) const
{
    return Find(i, LineKindOf(keyword)).first;
}

std::wstring_view MemberFile::FieldOf(std::size_t i, LineKind kind) const
{
    std::wstring_view fields = Find(i, kind).second;
    return GetSubString(fields);
}

BadMember MemberFile::Refusal(std::size_t i, const std::string& keyword, const char* code, std::string got,
                              std::string expected) const
{
    Defect why;
    why.line = LineOf(i, keyword);
    why.code = code;
    why.keyword = keyword;
    (expected.empty() ? why.advice : why.got) = std::move(got);
    why.expected = std::move(expected);
    why.member = i;
    return {m_name, std::move(why)};
}

CSteelGrade MemberFile::ReadInto(std::size_t i, Steel::CSteelMemberGen& member) const
{
    const CString text(Member(i).text);
    CSteelGrade grade;
    try {
        if (!member.CSVInputData(text, grade)) {
            throw Refusal(i, "SECTION", "code-section", Quote(FieldOf(i, LineKind::Section)),
                          "a section that the design code takes");
        }
    } catch (const Steel::unsupported_design_code_error& error) {
        throw Refusal(i, "MOMENT_AMPLIFICATION_FACTOR_STRONG_AXIS", "code", error.what(), {});
    }
    return grade;
}

} // namespace Keltrix::Host
