// BS 5950-1:2000 Table 13 with both ends, where the result does not even equal itself.

#include "TableOracle.h"

#include <gtest/gtest.h>

using namespace Keltrix;
using namespace Keltrix::Steel;
using namespace Keltrix::Steel::Test;

namespace {

const std::string clause = "<i>BS5950-1:2000 Table 13 and clause 4.3.5.2</i> condition: ";
constexpr Direction flange1 = CCodeShare::LT_COMP_FLANGE1;
const CRestraint nominal = Held(compLateral);

double BothEnds(CMemberResult* result, const CRestraint& end1, const CRestraint& end2)
{
    return CCodeShare(result).BS5950_1_2000_Table13(4.0, 0.4, flange1, end1, end2, false, false, false);
}

} // namespace

TEST(Table13TwoEnds, AFormatThatEqualsNothingMakesEqualFindingsAppearTwice)
{
    // Two records with such a format never compare equal, so the findings count as different.
    CUnit unit;
    unit.SetLength(L"m", notANumber);
    CMemberResult result;
    result.SetDesFormat(CDesFormat(unit));
    BothEnds(&result, nominal, nominal);
    EXPECT_EQ(Texts(result), std::vector<std::string>{clause + "1.0L(normal)\n" + clause + "1.0L(normal)\n"});
}
