#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "memberfile/MemberLine.h"

namespace Keltrix::Host {

/// Collects the defects of a file, member by member. A thousand are kept; beyond them only the first error and the first warning of each
/// member, so that each keeps a reason of its own: a file that is no member file at all has one in every line.
class DefectList {
public:
    /// With `isStrict` every warning is an error.
    explicit DefectList(bool isStrict) : m_isStrict(isStrict) {}

    void BeginMember();
    void EndMember();

    void Add(Severity severity, const char* code, const MemberLine& line, std::string field, std::string got,
             std::string expected, std::string advice);
    /// An error at which the library's reader, or its validation of points and sub-spans, refuses the member.
    void Refuse(const char* code, const MemberLine& line, std::string field, std::string got, std::string expected,
                std::string advice = {});
    /// Whether something is said for the first time in this member.
    bool IsFirst(std::string_view code);

    /// Of the member that is being checked.
    bool HasErrors() const { return m_hasErrors; }
    bool IsRefused() const { return m_isRefused; }

    /// The defects in the order of their lines. Where some were not kept the last one says how many; `lastLine` is its line.
    std::vector<Defect> Take(LineNumber lastLine);

private:
    static constexpr std::size_t MOST_DEFECTS = 1000;

    const bool m_isStrict;
    std::vector<Defect> m_defects;
    std::size_t m_unlisted = 0;
    bool m_unlistedError = false;
    std::size_t m_members = 0; // that are done

    bool m_isInMember = false;
    bool m_hasErrors = false;
    bool m_isRefused = false;
    std::array<bool, 3> m_hasDefect{}; // by severity
    std::vector<std::string_view> m_said;
};

/// "1 field", "2 fields".
std::string CountedWord(std::size_t n, const char* what);

} // namespace Keltrix::Host
