#include <cstring>
#include <memory>
#include <type_traits>

#include <gtest/gtest.h>

#include "Show.h"
#include "keltrix/platform/KxUtil.h"

namespace Keltrix {
namespace {

class Design : public CDesign {
public:
    CCloneable* Clone() const override { return new Design(*this); }
};

TEST(BaseEntity, KeepsItsName)
{
    BaseEntity entity;
    EXPECT_EQ(entity.GetName(), L"");
    entity.SetName(L"beam");
    EXPECT_EQ(entity.GetName(), L"beam");
    EXPECT_EQ(BaseEntity(L"column").GetName(), L"column");
}

TEST(CDesign, HasOneCategoryAndOneOptionAndStoresTheOption)
{
    Design design;
    EXPECT_EQ(design.Category(), 0);
    EXPECT_EQ(design.DesOpt(), 0);
    EXPECT_EQ(design.NumDesOpt(), 1);
    design.SetDesOpt(7);
    EXPECT_EQ(design.DesOpt(), 7);
}

TEST(CDesign, IsCopiedThroughABasePointerWithItsOption)
{
    Design design;
    design.SetDesOpt(3);
    const CCloneable& base = design;
    const std::unique_ptr<CCloneable> copy(base.Clone());
    ASSERT_NE(dynamic_cast<Design*>(copy.get()), nullptr);
    EXPECT_EQ(dynamic_cast<Design&>(*copy).DesOpt(), 3);
}

static_assert(std::is_abstract_v<CCloneable> && std::is_abstract_v<CDesign>);
static_assert(std::has_virtual_destructor_v<CCloneable>);

#if defined(__GNUC__) && (defined(__x86_64__) || defined(__i386__))
// A pointer to a virtual member function holds the offset of its entry in the table of virtual operations, plus 1.
template <class Member>
int TableEntry(Member member)
{
    std::ptrdiff_t offset = 0;
    std::memcpy(&offset, &member, sizeof(offset));
    return static_cast<int>((offset - 1) / static_cast<std::ptrdiff_t>(sizeof(void*)));
}

TEST(CDesign, KeepsTheOrderOfItsVirtualOperations)
{
    EXPECT_EQ(TableEntry(&CCloneable::Clone), 0);
    // The destructor's two entries are 1 and 2.
    EXPECT_EQ(TableEntry(&CDesign::Category), 3);
    EXPECT_EQ(TableEntry(&CDesign::SetDesOpt), 4);
    EXPECT_EQ(TableEntry(&CDesign::DesOpt), 5);
    EXPECT_EQ(TableEntry(&CDesign::NumDesOpt), 6);
}
#endif

} // namespace
} // namespace Keltrix
