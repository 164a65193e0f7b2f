#pragma once

#include <memory>
#include <string>
#include <utility>

#include "keltrix/steel/SteelMember.h"
#include "memberfile/MemberCheck.h"
#include "memberfile/MemberGrammar.h"
#include "memberfile/MemberPieces.h"
#include "memberfile/MemberWarnings.h"
#include "text/BadInput.h"

namespace Keltrix::Host {

/// A member that reading accepts and something else, as a rule the design code, does not.
class BadMember : public BadInput {
public:
    BadMember(const std::string& file, Defect why) : BadInput(why.Text(file)), defect(std::move(why)) {}

    Defect defect;
};

/// A member file, or a piece of one, that was read and checked: one member or several, one after another.
class MemberFile {
public:
    /// All of a file.
    explicit MemberFile(SourceText source, const ReadingOptions& options = {});
    /// A piece of the file that is called `name`. Throws BadInput where it is no text or too large.
    MemberFile(std::string name, const MemberPiece& piece, const ReadingOptions& options = {});

    const std::string& Name() const { return m_name; }
    const FileCheck& Check() const { return m_check; }
    /// Adds an error, a warning or a note that something else than reading found in a member.
    void Add(Defect defect);
    std::size_t MemberCount() const { return m_check.members.size(); }
    const MemberText& Member(std::size_t i) const { return m_check.members[i]; }
    /// Whether every warning is an error.
    bool IsStrict() const { return m_reading.isStrict; }
    /// Whether numbers and positions may leave gaps.
    bool AllowsGaps() const { return m_reading.allowGaps; }
    /// "floor.csv" where a file on disk holds one member, else "floor.csv:21", with the line at which member i starts.
    std::string NameOf(std::size_t i) const;

    /// The messages of member i's errors among the defects of the check.
    std::vector<std::string> ErrorsOf(std::size_t i) const;
    /// The messages of the errors of a member that was read after so many defects that its own are not listed.
    std::vector<std::string> UnlistedErrorsOf(std::size_t i) const;
    /// The warnings and notes of member i.
    std::vector<MemberWarning> WarningsOf(std::size_t i) const;

    /// The first line of member i with a keyword; its first line where there is none.
    LineNumber LineOf(std::size_t i, const std::string& keyword) const;
    /// The first field of the first such line of member i; empty where there is none.
    std::wstring_view FieldOf(std::size_t i, LineKind kind) const;
    /// An error in the line of member i with a keyword: what was found and what was expected, or a sentence by itself.
    BadMember Refusal(std::size_t i, const std::string& keyword, const char* code, std::string got,
                      std::string expected) const;

    /// Reads member i into the object and returns its grade. Throws BadMember where the member's reader refuses what the
    /// check accepted.
    CSteelGrade ReadInto(std::size_t i, Steel::CSteelMemberGen& member) const;

private:
    /// The first line of a kind, and what follows its keyword; else the first line of the member and nothing.
    std::pair<LineNumber, std::wstring_view> Find(std::size_t i, LineKind kind) const;

    MemberFile(SourceText source, const ReadingOptions& options, LineNumber firstLine, bool isAfterEnd, bool isWhole);

    std::string m_name;
    std::unique_ptr<const CString> m_text; // the check's views point into it
    ReadingOptions m_reading;
    FileCheck m_check;
    bool m_isWhole;
};

} // namespace Keltrix::Host
