// The member input file. What was accepted is written, that text can be read, and what is written from it reads back to the
// same text. (The first text need not: the short code loses restraints that pair a named flange with the compression or
// tension flange, and names what is left otherwise.)
#include "Fuzz.h"
#include "keltrix/steel/SteelMember.h"
#include "support/ConcreteMember.h"

using namespace Keltrix;
using namespace Keltrix::Steel;

namespace {

/// The text that the reader's outcome is written as, or nothing when it was refused.
template <class Member>
std::optional<CString> Rewritten(const CString& text)
{
    Member member;
    CMemberResult result;
    member.SetResult(&result);
    CSteelGrade grade;
    try {
        if (!member.CSVInputData(text, grade)) return std::nullopt;
    } catch (const unsupported_design_code_error&) {
        return std::nullopt;
    }
    // Layouts that are accepted need not be sound; looking at them must be.
    if (member.ValidateInputData()) {
        const auto& points = member.MemberPoints();
        const CSpan whole(&points, &member.SubSpans(), 0, static_cast<int>(points.size()) - 1);
        whole.ContinuousRestraint();
        whole.MaxDispYY(205e9, 1e-4);
        whole.InterpolateMoments(0.5);
        member.BucklingSenseLT(whole);
    }
    member.ReportInput(member.GetSectionText(result.DesFormat()));
    return member.CSVInputData(grade);
}

template <class Member>
void GoesRound(const CString& text)
{
    const std::optional<CString> first = Rewritten<Member>(text);
    if (!first) return;
    const std::optional<CString> second = Rewritten<Member>(*first);
    Fuzz::Require(second.has_value(), "what is written can be read", text, *first);
    const std::optional<CString> third = Rewritten<Member>(*second);
    Fuzz::Require(third.has_value(), "what is written again can be read", *first, *second);
    Fuzz::Require(*third == *second, "what is written again reads back to the same text", *second, *third);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const CString text = Fuzz::Text(Fuzz::Bytes(data, size));
    GoesRound<Test::ConcreteMember>(text);
    GoesRound<Test::AmplifiedMember>(text);
    return 0;
}
