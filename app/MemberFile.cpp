#include "MemberFile.h"

#include "Failure.h"
#include "Input.h"
#include "Text.h"

namespace Keltrix::App {

MemberFile::MemberFile(std::string name, CString text) :
    m_name(std::move(name)), m_text(std::make_unique<const CString>(std::move(text))), m_check(CheckMemberFile(*m_text))
{}

MemberFile MemberFile::Read(const std::string& path, std::istream& standardInput)
{
    SourceText source = ReadText(path, standardInput);
    return MemberFile(std::move(source.name), std::move(source.text));
}

std::string MemberFile::NameOf(std::size_t i) const
{
    return MemberCount() == 1 ? m_name : m_name + ':' + std::to_string(Member(i).firstLine);
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
