#include <memory>

#include "section/Properties.h"

namespace Keltrix::Steel::Test {
namespace {

/// An I section of the given type and shape word, asked for what the root class keeps.
ISection WithType(int type, int shape = CSecGeom::SHAPE_I)
{
    return Make<ISection>(HostSection(shape, type, {{CSecGeom::DEPTH, 0.4}}));
}

TEST(Fabrication, FollowsFromTheHostsType)
{
    const struct {
        int type;
        int fabType;
        bool welded;
        const wchar_t* text;
    } rows[] = {{0, 1, false, L"Hot rolled I"},  {1, 1, false, L"Hot rolled I"}, {2, 0, true, L"Welded I"},
                {3, 2, false, L"Cold formed I"}, {4, 3, true, L"Welded I"},      {5, 4, false, L"Welded I"},
                {6, 5, false, L"Welded I"},      {-1, 5, false, L"Welded I"},    {99, 5, false, L"Welded I"}};
    for (const auto& row : rows) {
        auto section = WithType(row.type);
        EXPECT_EQ(section.FabType(), row.fabType) << row.type;
        EXPECT_EQ(section.IsWelded(), row.welded) << row.type;
        EXPECT_EQ(section.SectGeomString(CDesFormat()).Find(row.text), 0) << row.type;
    }
}

TEST(Fabrication, OfATypeNotSaidFollowsFromEachOfTheBuiltUpBits)
{
    for (const int bit : {0x10, 0x20, 0x40, 0x80, 0x100}) {
        EXPECT_EQ(WithType(SEC_UNDEF, CSecGeom::SHAPE_I | bit).FabType(), 0) << bit;
        EXPECT_TRUE(WithType(SEC_UNDEF, CSecGeom::SHAPE_I | bit).IsWelded()) << bit;
        EXPECT_EQ(WithType(SEC_ROLLED, CSecGeom::SHAPE_I | bit).FabType(), 1) << bit;
    }
    EXPECT_EQ(WithType(SEC_UNDEF, CSecGeom::SHAPE_I | 0x200).FabType(), 1);
    EXPECT_EQ(WithType(SEC_UNDEF, CSecGeom::SHAPE_I | 0x800).FabType(), 1);
}

TEST(Fabrication, OfAnUnknownTypeStaysAsItWas)
{
    auto section = WithType(SEC_FORMED);
    EXPECT_TRUE(section.SetKeltrixSec(HostSection(CSecGeom::SHAPE_I, 6, {}), nullptr));
    EXPECT_EQ(section.FabType(), 2);
}

TEST(Fabrication, PlateTypeIsOneTwoOrNone)
{
    for (const auto& [plate, expected] : {std::pair{0, 0}, {1, 1}, {2, 2}, {3, 0}, {-1, 0}, {7, 0}}) {
        CSecComp component;
        component.SetShape(CSecGeom::SHAPE_I);
        component.SetPlate(plate);
        CSection host;
        host.SetComponent(0, component);
        EXPECT_EQ(Make<ISection>(host).PlateTypeCode(), expected) << plate;
    }
}

TEST(Fabrication, OnlyComponentZeroIsLookedAt)
{
    CSection host = HostI(0.4, 0.2, 0.01, 0.02, 0.0);
    CSecComp second;
    second.SetShape(CSecGeom::SHAPE_CHANNEL);
    second.SetType(SEC_FORMED);
    host.SetComponent(1, second);
    EXPECT_EQ(Make<ISection>(host).FabType(), 1);
}

TEST(Fabrication, CopiesKeepBaseFieldsAndDimensions)
{
    const auto original = WithType(SEC_FORMED);
    const ISection copy(original);
    ISection assigned;
    assigned = original;
    EXPECT_EQ(copy.FabType(), 2);
    EXPECT_EQ(assigned.FabType(), 2);
    EXPECT_EQ(assigned.SectGeomString(CDesFormat()), ISection(original).SectGeomString(CDesFormat()));
    const std::unique_ptr<CDesSectGeom> clone(original.Clone());
    EXPECT_EQ(clone->Area(), original.Area());
}

} // namespace
} // namespace Keltrix::Steel::Test
