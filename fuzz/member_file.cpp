// The member input file. What was accepted is written, and that text reads back and is written the same.
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
    Fuzz::Require(*second == *first, "what is written reads back to the same text", *first, *second);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const CString text = Fuzz::Text(Fuzz::Bytes(data, size));
    GoesRound<Test::ConcreteMember>(text);
    GoesRound<Test::AmplifiedMember>(text);
    return 0;
}
