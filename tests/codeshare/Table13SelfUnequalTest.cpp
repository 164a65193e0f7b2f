// BS 5950-1:2000 Table 13 with both ends, where the result does not even equal itself.

#include "TableOracle.h"

#include <gtest/gtest.h>

using namespace Keltrix;
using namespace Keltrix::Steel;
using namespace Keltrix::Steel::Test;

namespace {

double NominalEnds(CMemberResult* result)
{
    return CCodeShare(result).BS5950_1_2000_Table13(4.0, 0.4, flange1, nominal, nominal, false, false, false);
}

} // namespace

TEST(Table13TwoEnds, AFormatThatEqualsNothingMakesEqualFindingsAppearTwice)
{
    // Two records with such a format never compare equal, so the findings count as different.
    CUnit unit;
    unit.SetLength(L"m", notANumber);
    CMemberResult result;
    result.SetDesFormat(CDesFormat(unit));
    NominalEnds(&result);
    EXPECT_EQ(Texts(result), std::vector<std::string>{clause13 + "1.0L(normal)\n" + clause13 + "1.0L(normal)\n"});
}
