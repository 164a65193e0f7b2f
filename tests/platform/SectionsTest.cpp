#include <cstring>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "Show.h"
#include "keltrix/platform/KxData.h"

namespace Keltrix {
namespace {

constexpr const char* CATALOGUE =
    "family,designation,shape,type,mass_kg_m,depth_mm,width_mm,web_mm,flange_mm,root_mm,toe_mm\n"
    "XB,457x191x67,I,rolled,67.1,453.4,189.9,8.5,12.7,10.2,\n"
    "XCF,100x50x3,RHS,formed,6.6,100,50,3,3,,\n";

class CSecDBOverACatalogue : public testing::Test {
protected:
    CSecDBOverACatalogue() { EXPECT_TRUE(database.AddCsv(CATALOGUE).empty()); }
    CSectDB database;
};

TEST(SecTypeString, NamesTheFirstFourTypesAndNoOther)
{
    EXPECT_EQ(SecTypeString(SEC_UNDEF), L"UNDEF");
    EXPECT_EQ(SecTypeString(SEC_ROLLED), L"ROLLED");
    EXPECT_EQ(SecTypeString(SEC_WELDED), L"WELDED");
    EXPECT_EQ(SecTypeString(SEC_FORMED), L"FORMED");
    for (const int type : {4, 5, 6, -1, 1000})
        EXPECT_EQ(SecTypeString(static_cast<SecType>(type)), L"UNDEF") << type;
}

TEST(CSecGeom, StoresTheShapeWordAndSixteenDimensions)
{
    CSecGeom geom;
    EXPECT_EQ(geom.Shape(), 0);
    for (int i = 0; i < 16; ++i)
        EXPECT_EQ(geom.Dimension(0.0, static_cast<CSecGeom::Prop>(i)), 0.0) << i;
    for (int i = 0; i < 16; ++i)
        geom.SetDimension(static_cast<CSecGeom::Prop>(i), i + 0.5);
    for (int i = 0; i < 16; ++i) {
        EXPECT_EQ(geom.Dimension(0.0, static_cast<CSecGeom::Prop>(i)), i + 0.5) << i;
        EXPECT_EQ(geom.Dimension(0.75, static_cast<CSecGeom::Prop>(i)), i + 0.5) << "prismatic, " << i;
    }
    for (const int shape : {1, 0x101, 0x140f, -1, std::numeric_limits<int>::min()}) {
        geom.SetShape(shape);
        EXPECT_EQ(geom.Shape(), shape);
    }
}

TEST(CSecGeom, KeepsTheShapeWordDirectlyBehindTheTableOfVirtualOperations)
{
    CSecComp component;
    component.SetShape(0x1F3);
    int word = 0;
    std::memcpy(&word, reinterpret_cast<const char*>(&component) + sizeof(void*), sizeof(word));
    EXPECT_EQ(word, 0x1F3);
}

TEST(CSecComp, HasItsDefaultsAndStoresAnyValue)
{
    CSecComp component;
    EXPECT_EQ(component.Type(), SEC_UNDEF);
    EXPECT_EQ(component.Plate(), PLATE_NONE);
    EXPECT_EQ(component.NetGross(), 1.0);
    EXPECT_EQ(component.Beta(), 0.7);
    EXPECT_EQ(component.PlasElas(), 1.2);
    for (const int value : {0, 1, 2, 3, 4, 5, 6, -7, 123456}) {
        component.SetType(value);
        component.SetPlate(value);
        component.SetMaterialType(value);
        component.SetMaterialAnalysis(value);
        EXPECT_EQ(component.Type(), value);
        EXPECT_EQ(component.Plate(), value);
        EXPECT_EQ(component.MaterialType(), value);
        EXPECT_EQ(component.MaterialAnalysis(), value);
    }
    component.SetNetGross(0.9);
    component.SetBeta(0.6);
    component.SetPlasElas(1.1);
    EXPECT_EQ(component.NetGross(), 0.9);
    EXPECT_EQ(component.Beta(), 0.6);
    EXPECT_EQ(component.PlasElas(), 1.1);
}

TEST(CSecComp, TakesOverAGeometryWithoutItsOwnDesignData)
{
    CSecGeom geom;
    geom.SetShape(CSecGeom::SHAPE_CHS);
    geom.SetDimension(CSecGeom::DEPTH, 0.1);
    CSecComp component;
    component.SetBeta(0.5);
    component.SetSecGeom(geom);
    EXPECT_EQ(component.Shape(), CSecGeom::SHAPE_CHS);
    EXPECT_EQ(component.Dimension(0.0, CSecGeom::DEPTH), 0.1);
    EXPECT_EQ(component.Beta(), 0.5);
}

TEST_F(CSecDBOverACatalogue, SetsUpACatalogueSection)
{
    CSecDB geometry(L"name", &database);
    EXPECT_EQ(geometry.Name(), L"name");
    EXPECT_EQ(geometry.UserDesc(), L"");
    ASSERT_TRUE(geometry.SetUpFromDesc(L"xb457 x 191\u00D767"));
    EXPECT_EQ(geometry.Shape(), CSecGeom::SHAPE_I);
    EXPECT_EQ(geometry.Dimension(0.0, CSecGeom::DEPTH), 453.4 / 1000.0);
    EXPECT_EQ(geometry.Dimension(0.0, CSecGeom::WIDTH), 189.9 / 1000.0);
    EXPECT_EQ(geometry.Dimension(0.0, CSecGeom::WEB_THICKNESS), 8.5 / 1000.0);
    EXPECT_EQ(geometry.Dimension(0.0, CSecGeom::FLANGE_THICKNESS), 12.7 / 1000.0);
    EXPECT_EQ(geometry.Dimension(0.0, CSecGeom::ROOT_RADIUS), 10.2 / 1000.0);
    EXPECT_EQ(geometry.Dimension(0.0, CSecGeom::TOE_RADIUS), 0.0);
    EXPECT_EQ(geometry.CatalogueType(), SEC_ROLLED);
    EXPECT_EQ(geometry.UserDesc(), L"XB 457x191x67");
    EXPECT_EQ(geometry.Description(true), L"XB 457x191x67");
    EXPECT_EQ(geometry.Description(false), L"XB 457x191x67 (D 453.4 B 189.9 t 8.5 T 12.7 r 10.2 mm)");
}

TEST_F(CSecDBOverACatalogue, ForgetsEverythingOnAnUnknownDescription)
{
    CSecDB geometry(L"", &database);
    ASSERT_TRUE(geometry.SetUpFromDesc(L"XCF 100x50x3"));
    EXPECT_EQ(geometry.CatalogueType(), SEC_FORMED);
    EXPECT_FALSE(geometry.SetUpFromDesc(L"XB 1x2x3"));
    EXPECT_EQ(geometry.Shape(), 0);
    for (int i = 0; i < 16; ++i)
        EXPECT_EQ(geometry.Dimension(0.0, static_cast<CSecGeom::Prop>(i)), 0.0) << i;
    EXPECT_EQ(geometry.CatalogueType(), SEC_UNDEF);
    EXPECT_EQ(geometry.UserDesc(), L"XB 1x2x3");
    EXPECT_EQ(geometry.Description(true), L"");
}

TEST_F(CSecDBOverACatalogue, KnowsTheCatalogueOnlyWhileItHasOne)
{
    CSecDB geometry(L"", nullptr);
    EXPECT_FALSE(geometry.SetUpFromDesc(L"XB 457x191x67"));
    geometry.SetSectDB(&database);
    EXPECT_TRUE(geometry.SetUpFromDesc(L"XB 457x191x67"));
}

TEST_F(CSecDBOverACatalogue, ForgetsTheDesignationWhenShapeOrDimensionsChange)
{
    CSecDB geometry(L"", &database);
    ASSERT_TRUE(geometry.SetUpFromDesc(L"XB 457x191x67"));
    CSecComp component;
    component.SetSecGeom(geometry);
    EXPECT_EQ(component.Description(true), L"XB 457x191x67");
    component.SetDimension(CSecGeom::FLANGE_THICKNESS, 0.02);
    EXPECT_EQ(component.Description(true), L"I 453.4x189.9x8.5x20x10.2");

    component.SetSecGeom(geometry);
    component.SetShape(CSecGeom::SHAPE_RHS);
    EXPECT_EQ(component.Description(true), L"BOX 453.4x189.9x8.5x12.7");
}

TEST(CSection, AlwaysHasAFirstComponent)
{
    const CSection section;
    EXPECT_EQ(section.NumComponents(), 1);
    EXPECT_EQ(section.GetName(), L"");
    EXPECT_EQ(section.Component(0).Shape(), 0);
    EXPECT_EQ(section.Component(0).Type(), SEC_UNDEF);
}

TEST(CSection, SetsUpItsFirstComponentFromADescription)
{
    const CSection section(L"BOX 200x100x6x10");
    EXPECT_EQ(section.GetName(), L"BOX 200x100x6x10");
    EXPECT_EQ(section.Component(0).Shape(), CSecGeom::SHAPE_RHS);
    EXPECT_EQ(section.Component(0).Dimension(0.0, CSecGeom::FLANGE_THICKNESS), 10.0 / 1000.0);
    EXPECT_EQ(CSection(L"no such section").Component(0).Shape(), 0);
}

TEST(CSection, TakesComponentsAndFillsTheGapBelowWithDefaults)
{
    CSection section;
    CSecComp component;
    component.SetType(SEC_WELDED);
    section.SetComponent(2, component);
    ASSERT_EQ(section.NumComponents(), 3);
    EXPECT_EQ(section.Component(1).Type(), SEC_UNDEF);
    EXPECT_EQ(section.Component(2).Type(), SEC_WELDED);
    section.SetComponent(9, section.Component(2));
    ASSERT_EQ(section.NumComponents(), 10);
    EXPECT_EQ(section.Component(9).Type(), SEC_WELDED);
    const CSection copy = section;
    section.SetComponent(0, component);
    EXPECT_EQ(copy.Component(0).Type(), SEC_UNDEF);
}

TEST(CSteelGrade, HoldsItsNumbers)
{
    const CSteelGrade none;
    EXPECT_EQ(none.Name(), L"");
    EXPECT_EQ(none.GetUserPy(), 0.0);
    EXPECT_EQ(none.GetMatFactor(), 1.0);
    const CSteelGrade grade(L"User_defined", 275e6, 410e6, 205e9, 1.05);
    EXPECT_EQ(grade.Name(), L"User_defined");
    EXPECT_EQ(grade.GetUserPy(), 275e6);
    EXPECT_EQ(grade.GetUserPu(), 410e6);
    EXPECT_EQ(grade.GetUserE(), 205e9);
    EXPECT_EQ(grade.GetMatFactor(), 1.05);
    EXPECT_NE(grade, none);
}

} // namespace
} // namespace Keltrix
