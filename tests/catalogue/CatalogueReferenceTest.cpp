// Every row of the catalogue against the published tables, where they are at hand.

#include <gtest/gtest.h>

#include <set>

#include "catalogue/CatalogueSupport.h"
#include "catalogue/ReferenceTables.h"

namespace Keltrix::Steel::Test {
namespace {

class CatalogueAgainstPublishedTables : public testing::Test {
protected:
    void SetUp() override
    {
        if (ReferenceFolder().empty())
            GTEST_SKIP() << "Left out: needs a folder of published tables (cmake -DKELTRIX_REFERENCE_DIR=FOLDER)";
        published = ReadPublishedTables(ReferenceFolder());
    }

    PublishedTables published;
};

TEST_F(CatalogueAgainstPublishedTables, EveryRowHasThePublishedDimensionsAndMass)
{
    int compared = 0;
    for (const CatalogueRow& row : Catalogue()) {
        const auto found = published.find(row.name);
        if (found == published.end()) {
            ADD_FAILURE() << row.name << " is in no published table";
            continue;
        }
        const PublishedRow& table = found->second;
        const auto expect = [&](const char* what, double ours, const std::vector<std::string>& columns) {
            // Radii of hollow sections, toe radii of sections with square toes: no column, 0 on our side.
            const std::string column = table.FirstOf(columns);
            EXPECT_NEAR(ours, table.Number(column), 1e-9)
                << row.name << ": " << what << ", published in column " << column << " of " << table.file;
            ++compared;
        };
        expect("mass", row.mass, {"mass_kg_m"});
        expect("depth", row.D, {"D_mm", "leg_A_mm"});
        expect("width", row.B, {"B_mm", "leg_B_mm"});
        expect("web", row.t, {"t_web_mm", "t_mm"});
        expect("flange", row.T, {"T_flange_mm", "t_mm"});
        expect("root radius", row.r, {"r_root_mm", "r1_root_mm", "r1_mm"});
        expect("toe radius", row.rt, {"r2_toe_mm"});
    }
    EXPECT_EQ(compared, 7 * 1458);
}

TEST_F(CatalogueAgainstPublishedTables, NoPublishedRowIsMissing)
{
    std::set<std::string> names;
    for (const CatalogueRow& row : Catalogue())
        names.insert(row.name);
    int outside = 0;
    for (const auto& [name, row] : published) {
        // Channels with tapered flanges are no shape of the catalogue.
        if (name.rfind("UPN ", 0) == 0) {
            ++outside;
        } else {
            EXPECT_EQ(names.count(name), 1u) << name << " of " << row.file << " is not in the catalogue";
        }
    }
    EXPECT_EQ(outside, 18);
}

} // namespace
} // namespace Keltrix::Steel::Test
