#pragma once

#include <iosfwd>
#include <memory>
#include <string>

#include "MemberCheck.h"
#include "MemberPieces.h"
#include "MemberWarnings.h"
#include "keltrix/steel/SteelMember.h"

namespace Keltrix::App {

/// A member file, or a piece of one, that was read and checked: one member or several, one after another.
class MemberFile {
public:
    /// All of a file. Throws BadInput where it is no text.
    static MemberFile Read(const std::string& path, std::istream& standardInput, const ReadingOptions& options = {});
    /// A piece of the file that is called `name`. Throws BadInput where it is no text or too large.
    MemberFile(std::string name, const MemberPiece& piece, const ReadingOptions& options = {});

    const std::string& Name() const { return m_name; }
    const FileCheck& Check() const { return m_check; }
    std::size_t MemberCount() const { return m_check.members.size(); }
    const MemberText& Member(std::size_t i) const { return m_check.members[i]; }
    /// "floor.csv" where a file on disk holds one member, else "floor.csv:21", with the line at which member i starts.
    std::string NameOf(std::size_t i) const;

    /// The warnings and notes of member i.
    std::vector<MemberWarning> WarningsOf(std::size_t i) const;

    /// Reads member i into the object and gives its grade. Throws BadInput, with file and line, where the member's
    /// reader refuses what the check let pass.
    CSteelGrade ReadInto(std::size_t i, Steel::CSteelMemberGen& member) const;

private:
    MemberFile(SourceText source, const ReadingOptions& options, LineNumber firstLine, bool isAfterEnd, bool isWhole);

    std::string m_name;
    std::unique_ptr<const CString> m_text; // the check's views point into it
    FileCheck m_check;
    bool m_isWhole;
};

} // namespace Keltrix::App
