#include "memberfile/DefectList.h"

#include <algorithm>
#include <utility>

namespace Keltrix::Host {

std::string CountedWord(std::size_t n, const char* what)
{
    return std::to_string(n) + ' ' + what + (n == 1 ? "" : "s");
}

void DefectList::BeginMember()
{
    m_isInMember = true;
    m_hasErrors = false;
    m_isRefused = false;
    m_hasDefect = {};
    m_said.clear();
}

void DefectList::EndMember()
{
    m_isInMember = false;
    ++m_members;
}

void DefectList::Add(Severity severity, const char* code, const MemberLine& line, std::string field, std::string got,
                     std::string expected, std::string advice)
{
    if (severity == Severity::Warning && m_isStrict) severity = Severity::Error;
    if (severity == Severity::Error) m_hasErrors = true;
    const bool isFirst = !std::exchange(m_hasDefect[static_cast<std::size_t>(severity)], true);
    if (m_defects.size() >= MOST_DEFECTS && !(isFirst && m_isInMember)) {
        ++m_unlisted;
        if (severity == Severity::Error) m_unlistedError = true;
        return;
    }
    m_defects.push_back({severity, line.number, code, KeywordOf(line.kind), std::move(field), std::move(got),
                         std::move(expected), std::move(advice), m_isInMember ? m_members : Defect::NO_MEMBER});
}

void DefectList::Refuse(const char* code, const MemberLine& line, std::string field, std::string got,
                        std::string expected, std::string advice)
{
    m_isRefused = true;
    Add(Severity::Error, code, line, std::move(field), std::move(got), std::move(expected), std::move(advice));
}

bool DefectList::IsFirst(std::string_view code)
{
    if (std::find(m_said.begin(), m_said.end(), code) != m_said.end()) return false;
    m_said.push_back(code);
    return true;
}

std::vector<Defect> DefectList::Take(LineNumber lastLine)
{
    std::stable_sort(m_defects.begin(), m_defects.end(),
                     [](const Defect& a, const Defect& b) { return a.line < b.line; });
    if (m_unlisted > 0) {
        Defect rest;
        rest.severity = m_unlistedError ? Severity::Error : Severity::Warning;
        rest.line = lastLine;
        rest.code = "not-listed";
        rest.advice = CountedWord(m_unlisted, "further defect") + " not listed; mend those above first";
        rest.member = m_members - 1;
        m_defects.push_back(std::move(rest));
    }
    return std::move(m_defects);
}

} // namespace Keltrix::Host
