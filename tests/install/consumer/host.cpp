// Uses the out-of-tree module through the base class: a 6 m beam, UB 457x191x67, 200 kNm at midspan.
// Published for this section: A = 85.5 cm2, Zx = 1296 cm3; so 200 kNm / (1296 cm3 x 275 N/mm2) = 0.561.
#include <cstdio>
#include <memory>

#include "YieldCode.h"

using namespace Keltrix;
using namespace Keltrix::Steel;

int main()
{
    const std::unique_ptr<CSteelMember> member(NewYieldMember());
    CMemberResult result;
    if (!member->SetResult(&result) || !member->SetKeltrixSec(CSection(L"UB 457x191x67")) ||
        !member->SetGrade(CSteelGrade(L"S275", 275e6, 410e6, 205e9, 1.0)))
        return 1;

    std::vector<CMemberPoint> points(3);
    std::vector<CSubSpan> subSpans(2);
    for (int i = 0; i < 3; ++i) {
        points[static_cast<std::size_t>(i)].Set1Index(i + 1);
        points[static_cast<std::size_t>(i)].SetPos(3.0 * i);
    }
    subSpans[0].Set1Index(1);
    subSpans[0].SetMomentsAll({0.0, 0.0, 0.0}, {0.0, 200e3, 0.0});
    subSpans[1].Set1Index(2);
    subSpans[1].SetMomentsAll({0.0, 200e3, 0.0}, {0.0, 0.0, 0.0});
    if (!member->SetMemberPointVec(points) || !member->SetSubSpanVec(subSpans)) return 1;

    const bool passes = member->Check();
    // A copy through the base is the derived class, and carries its layout.
    const std::unique_ptr<CCloneable> copy(member->Clone());
    const auto* copied = dynamic_cast<const CSteelMember*>(copy.get());
    if (copied == nullptr || copied->Length() != 6.0) return 1;
    // What the check wrote reaches the host as text.
    if (result.GetVerbose().Find(L"Section Data") < 0) return 1;

    // The input file goes round: what is written reads back to the same text.
    CSteelGrade grade = member->GetGrade();
    const CString text = member->CSVInputData(grade);
    const std::unique_ptr<CSteelMember> again(NewYieldMember());
    CSteelGrade gradeRead;
    if (!again->CSVInputData(text, gradeRead) || again->CSVInputData(gradeRead) != text) return 1;

    std::printf("%s %.3f\n", passes ? "PASS" : "FAIL", result.UtilOverAll());
}
