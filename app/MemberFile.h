#pragma once

#include <iosfwd>
#include <memory>
#include <string>

#include "MemberCheck.h"
#include "keltrix/steel/SteelMember.h"

namespace Keltrix::App {

/// A member file that was read and checked: one member or several, one after another.
class MemberFile {
public:
    /// Throws BadInput where the file is no text.
    static MemberFile Read(const std::string& path, std::istream& standardInput);

    const std::string& Name() const { return m_name; }
    const FileCheck& Check() const { return m_check; }
    std::size_t MemberCount() const { return m_check.members.size(); }
    const MemberText& Member(std::size_t i) const { return m_check.members[i]; }
    /// "floor.csv", and for a file of several members "floor.csv:21", the line at which member i starts.
    std::string NameOf(std::size_t i) const;

    /// Reads member i into the object and gives its grade. Throws BadInput, with file and line, where the member's
    /// reader refuses what the check let pass.
    CSteelGrade ReadInto(std::size_t i, Steel::CSteelMemberGen& member) const;

private:
    MemberFile(std::string name, CString text);

    std::string m_name;
    std::unique_ptr<const CString> m_text; // the check's views point into it
    FileCheck m_check;
};

} // namespace Keltrix::App
