#include "MemberFile.h"

#include "Failure.h"
#include "Text.h"

namespace Keltrix::App {

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

} // namespace

MemberFile::MemberFile(SourceText source, const ReadingOptions& options, LineNumber firstLine, bool isAfterEnd,
                       bool isWhole) :
    m_name(std::move(source.name)),
    m_text(std::make_unique<const CString>(std::move(source.text))),
    m_check(CheckMemberFile(*m_text, options, firstLine, isAfterEnd)), m_isWhole(isWhole)
{}

MemberFile::MemberFile(std::string name, const MemberPiece& piece, const ReadingOptions& options) :
    MemberFile(Decode(name, piece), options, piece.FirstLine(), piece.isBehindEnd, piece.isWhole)
{}

MemberFile MemberFile::Read(const std::string& path, std::istream& standardInput, const ReadingOptions& options)
{
    return {ReadText(path, standardInput), options, 1, false, true};
}

std::string MemberFile::NameOf(std::size_t i) const
{
    return m_isWhole && MemberCount() == 1 ? m_name : m_name + ':' + std::to_string(Member(i).firstLine);
}

std::vector<MemberWarning> MemberFile::WarningsOf(std::size_t i) const
{
    std::vector<MemberWarning> warnings;
    for (const Defect& defect : m_check.DefectsOf(i)) {
        if (defect.severity != Severity::Error) warnings.push_back(WarningOf(defect, m_name));
    }
    return warnings;
}

CSteelGrade MemberFile::ReadInto(std::size_t i, Steel::CSteelMemberGen& member) const
{
    const std::string place = m_name + ':' + std::to_string(Member(i).firstLine);
    const CString text(Member(i).text);
    CSteelGrade grade;
    try {
        if (!member.CSVInputData(text, grade)) {
            const CString section = member.GetKeltrixSec().Component(0).Description(true);
            throw BadInput(place + ": the design code does not take this member, with the section " +
                           Quote(section.View()));
        }
    } catch (const Steel::unsupported_design_code_error& error) {
        throw BadInput(place + ": " + error.what());
    }
    return grade;
}

} // namespace Keltrix::App
