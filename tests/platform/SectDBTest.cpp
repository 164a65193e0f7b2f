#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Show.h"
#include "keltrix/platform/KxData.h"

namespace Keltrix {
namespace {

const std::string HEADER =
    "family,designation,shape,type,mass_kg_m,depth_mm,width_mm,web_mm,flange_mm,root_mm,toe_mm\n";

std::string Described(const std::vector<CatalogueError>& errors)
{
    std::string text;
    for (const CatalogueError& error : errors) {
        text += std::to_string(error.line) + ":" + std::to_string(error.column) + ": " +
                error.message.ToUtf8().value_or("?") + "\n";
    }
    return text;
}

TEST(CSectDB, ReadsRowsOfEveryShape)
{
    CSectDB database;
    const auto errors = database.AddCsv("# universal beams and others\n" + HEADER +
                                        "\n"
                                        "UB,457x191x67,I,rolled,67.1,453.4,189.9,8.5,12.7,10.2,\n"
                                        "PFC,200x90x30,channel,rolled,29.7,200,90,7,14,12,\n"
                                        "  # a remark\n"
                                        "T,229x191x34,tee,rolled,33.6,226.6,189.9,8.5,12.7,10.2,\n"
                                        "L,150x75x10,angle,rolled,17,150,75,10,10,12,6\n"
                                        "RHS,200x100x6.3,RHS,rolled,28.1,200,100,6.3,6.3,,\n"
                                        "CFCHS,168.3x5,CHS,formed,20.1,168.3,,5,,,\n"
                                        "PG,1000x300x200,I,welded,200,1000,300,12,20,,\n");
    ASSERT_EQ(Described(errors), "");
    ASSERT_EQ(database.Entries().size(), 7U);
    const CSectDB::Entry* const beam = database.Find(L"UB 457x191x67");
    ASSERT_NE(beam, nullptr);
    EXPECT_EQ(beam, &database.Entries()[0]);
    EXPECT_EQ(beam->family, L"UB");
    EXPECT_EQ(beam->designation, L"UB 457x191x67");
    EXPECT_EQ(beam->shape, 1);
    EXPECT_EQ(beam->secType, 1);
    EXPECT_EQ(beam->massPerMetre, 67.1);
    EXPECT_EQ(beam->depth, 453.4 / 1000.0);
    EXPECT_EQ(beam->width, 189.9 / 1000.0);
    EXPECT_EQ(beam->webThickness, 8.5 / 1000.0);
    EXPECT_EQ(beam->flangeThickness, 12.7 / 1000.0);
    EXPECT_EQ(beam->rootRadius, 10.2 / 1000.0);
    EXPECT_EQ(beam->toeRadius, 0.0);
    const int shapes[] = {1, 3, 4, 5, 9, 7, 1};
    const int types[] = {1, 1, 1, 1, 1, 3, 2};
    for (std::size_t i = 0; i < 7; ++i) {
        EXPECT_EQ(database.Entries()[i].shape, shapes[i]) << i;
        EXPECT_EQ(database.Entries()[i].secType, types[i]) << i;
    }
    const CSectDB::Entry* const tube = database.Find(L"CFCHS 168.3x5");
    ASSERT_NE(tube, nullptr);
    EXPECT_EQ(tube->webThickness, 0.005);
    EXPECT_EQ(tube->flangeThickness, 0.005) << "one thickness, given in either column";
    EXPECT_EQ(database.Find(L"L 150x75x10")->toeRadius, 0.006);
}

TEST(CSectDB, TakesColumnsByNameInAnyOrder)
{
    CSectDB database;
    const auto errors =
        database.AddCsv("toe_mm,root_mm,flange_mm,web_mm,width_mm,depth_mm,mass_kg_m,type,shape,designation,family\n"
                        ",10.2,12.7,8.5,189.9,453.4,67.1,rolled,I,457x191x67,UB\n");
    ASSERT_EQ(Described(errors), "");
    ASSERT_NE(database.Find(L"UB 457x191x67"), nullptr);
    EXPECT_EQ(database.Find(L"UB 457x191x67")->depth, 453.4 / 1000.0);
}

TEST(CSectDB, ForgivesAByteOrderMarkCarriageReturnsAndBlanks)
{
    CSectDB database;
    std::string csv = "\xEF\xBB\xBF" + HEADER + " UB , 457x191x67 , I , rolled , 67.1 , 453.4 ,189.9,8.5,12.7,10.2, ";
    std::string withReturns;
    for (const char c : csv)
        withReturns += c == '\n' ? std::string("\r\n") : std::string(1, c);
    ASSERT_EQ(Described(database.AddCsv(withReturns)), "");
    EXPECT_NE(database.Find(L"UB 457x191x67"), nullptr);
}

TEST(CSectDB, FindsWhateverTheCaseBlanksOrMultiplicationSign)
{
    CSectDB database;
    ASSERT_EQ(Described(database.AddCsv(HEADER + "UB,457x191x67,I,rolled,67.1,453.4,189.9,8.5,12.7,10.2,\n")), "");
    for (const wchar_t* const text :
         {L"UB 457x191x67", L"ub457X191X67", L" uB\t457 x 191 x 67 ", L"UB 457\u00D7191\u00D767", L"UB 457*191*67"}) {
        EXPECT_NE(database.Find(text), nullptr) << CString(text).ToUtf8().value();
    }
    for (const wchar_t* const text :
         {L"", L"UB", L"457x191x67", L"UB 457x191x6", L"UB 457x191x670", L"UB,457x191x67"}) {
        EXPECT_EQ(database.Find(text), nullptr) << CString(text).ToUtf8().value();
    }
}

struct Fault {
    const char* row;
    int column;
    const char* message;
};

TEST(CSectDB, SaysWhatIsWrongAndWhere)
{
    const Fault faults[] = {
        {"UB,a,J,rolled,67.1,453.4,189.9,8.5,12.7,10.2,", 3,
         "shape: expected one of I, channel, tee, angle, RHS, CHS, found \"J\""},
        {"UB,a,I,cast,67.1,453.4,189.9,8.5,12.7,10.2,", 4,
         "type: expected one of rolled, welded, formed, found \"cast\""},
        {"UB,a,I,rolled,,453.4,189.9,8.5,12.7,10.2,", 5,
         "mass_kg_m: expected a mass per metre in kg/m, above 0, found nothing"},
        {"UB,a,I,rolled,67.1,453.4m,189.9,8.5,12.7,10.2,", 6,
         "depth_mm: expected a dimension in mm, not negative, found \"453.4m\""},
        {"UB,a,I,rolled,67.1,-453.4,189.9,8.5,12.7,10.2,", 6,
         "depth_mm: expected a dimension in mm, not negative, found \"-453.4\""},
        {"UB,a,I,rolled,67.1,inf,189.9,8.5,12.7,10.2,", 6,
         "depth_mm: expected a dimension in mm, not negative, found \"inf\""},
        {"UB,a,I,rolled,67.1,453.4,,8.5,12.7,10.2,", 7, "width_mm: expected a dimension in mm, above 0, found nothing"},
        {"UB,a,I,rolled,67.1,453.4,189.9,8.5,0,10.2,", 9,
         "flange_mm: expected a dimension in mm, above 0, found \"0\""},
        {",a,I,rolled,67.1,453.4,189.9,8.5,12.7,10.2,", 1,
         "family: expected plain UTF-8 text without quotation marks, found nothing"},
        {"UB,\"a\",I,rolled,67.1,453.4,189.9,8.5,12.7,10.2,", 2,
         "designation: expected plain UTF-8 text without quotation marks, found \"\"a\"\""},
        {"L,a,angle,rolled,17,150,75,10,11,12,6", 9,
         "flange_mm: expected the thickness of the column web_mm, since this shape has a single one, found \"11\""},
        {"UB,a,I,rolled,67.1,453.4,189.9,8.5,12.7,10.2", 0, "expected 11 fields as in the header line, found 10"},
    };
    for (const Fault& fault : faults) {
        SCOPED_TRACE(fault.row);
        CSectDB database;
        const auto errors = database.AddCsv("# remark\n" + HEADER + fault.row + "\n");
        ASSERT_EQ(errors.size(), 1U) << Described(errors);
        EXPECT_EQ(errors[0].line, 3);
        EXPECT_EQ(errors[0].column, fault.column);
        EXPECT_EQ(errors[0].message.ToUtf8(), fault.message);
        EXPECT_TRUE(database.Entries().empty());
    }
}

TEST(CSectDB, NamesIllFormedTextInAMessageThatIsWellFormed)
{
    CSectDB database;
    const auto errors = database.AddCsv(HEADER + "U\xFF,a,I,rolled,67.1,453.4,189.9,8.5,12.7,10.2,\n");
    ASSERT_EQ(errors.size(), 1U);
    EXPECT_EQ(errors[0].column, 1);
    EXPECT_TRUE(errors[0].message.ToUtf8().has_value());
}

TEST(CSectDB, CollectsAllErrorsAndThenAddsNothing)
{
    CSectDB database;
    const auto errors = database.AddCsv(HEADER + "UB,good,I,rolled,67.1,453.4,189.9,8.5,12.7,10.2,\n"
                                                 "UB,bad,J,cast,x,453.4,189.9,8.5,12.7,10.2,\n"
                                                 "UB,GOOD,I,rolled,67.1,453.4,189.9,8.5,12.7,10.2,\n"
                                                 "short\n");
    ASSERT_EQ(errors.size(), 5U) << Described(errors);
    const int lines[] = {3, 3, 3, 4, 5};
    const int columns[] = {3, 4, 5, 2, 0};
    for (std::size_t i = 0; i < errors.size(); ++i) {
        EXPECT_EQ(errors[i].line, lines[i]) << Described(errors);
        EXPECT_EQ(errors[i].column, columns[i]) << Described(errors);
    }
    EXPECT_EQ(errors[3].message, L"designation: expected a new designation, found \"UB GOOD\" again");
    EXPECT_TRUE(database.Entries().empty());
    EXPECT_EQ(database.Find(L"UB good"), nullptr);
}

TEST(CSectDB, RefusesADesignationThatItHolds)
{
    CSectDB database;
    const std::string csv = HEADER + "UB,one,I,rolled,67.1,453.4,189.9,8.5,12.7,10.2,\n";
    ASSERT_TRUE(database.AddCsv(csv).empty());
    EXPECT_EQ(database.AddCsv(csv).size(), 1U);
    EXPECT_EQ(database.Entries().size(), 1U);
    ASSERT_TRUE(database.AddCsv(HEADER + "UB,two,I,rolled,67.1,453.4,189.9,8.5,12.7,10.2,\n").empty());
    EXPECT_NE(database.Find(L"UB one"), nullptr);
    EXPECT_NE(database.Find(L"UB two"), nullptr);
}

TEST(CSectDB, NeedsACompleteHeaderLine)
{
    CSectDB database;
    for (const char* const empty : {"", "\n\n", "# only a remark\n", "\xEF\xBB\xBF"}) {
        const auto errors = database.AddCsv(empty);
        ASSERT_EQ(errors.size(), 1U) << empty;
        EXPECT_EQ(errors[0].line, 0);
    }
    EXPECT_TRUE(database.AddCsv(HEADER).empty()) << "a header without rows adds nothing";

    const auto errors =
        database.AddCsv("family,designation,form,type,type,mass_kg_m,depth_mm,width_mm,web_mm,flange_mm,"
                        "root_mm,toe_mm\nUB,a,J\n");
    ASSERT_EQ(errors.size(), 3U) << Described(errors);
    EXPECT_EQ(errors[0].column, 3);
    EXPECT_EQ(errors[1].column, 5);
    EXPECT_EQ(errors[2].message, L"expected a column \"shape\", found none");
    EXPECT_EQ(errors[2].line, 1);
}

TEST(CSectDB, SuggestsTheNearestDesignationsOfTheSameFamilyFirst)
{
    CSectDB database;
    ASSERT_TRUE(database
                    .AddCsv(HEADER + "UC,254x254x89,I,rolled,88.9,260.3,256.3,10.3,17.3,12.7,\n"
                                     "UB,254x146x37,I,rolled,37,256,146.4,6.3,10.9,7.6,\n"
                                     "UB,254x146x31,I,rolled,31.1,251.4,146.1,6,8.6,7.6,\n"
                                     "UB,457x191x67,I,rolled,67.1,453.4,189.9,8.5,12.7,10.2,\n"
                                     "UX,254x146x39,I,rolled,39,256,146.4,6.3,10.9,7.6,\n")
                    .empty());
    using Names = std::vector<CString>;
    EXPECT_EQ(database.Suggest(L"UB 254x146x39", 2), (Names{L"UB 254x146x37", L"UB 254x146x31"}));
    EXPECT_EQ(database.Suggest(L"ub 457 x 191 x 68", 1), (Names{L"UB 457x191x67"}));
    EXPECT_EQ(database.Suggest(L"UC 254x245x89", 1), (Names{L"UC 254x254x89"}));
    EXPECT_EQ(database.Suggest(L"457x191x67", 1), (Names{L"UB 457x191x67"}));
    EXPECT_EQ(database.Suggest(L"x", 99).size(), 5U);
    EXPECT_TRUE(database.Suggest(L"UB", 0).empty());
    EXPECT_EQ(database.Suggest(std::wstring(1000000, L'x'), 3).size(), 3U);
    EXPECT_TRUE(CSectDB().Suggest(L"UB 1", 3).empty());
}

std::string Found(const CSectDB& database, const std::wstring& text)
{
    const CSectDB::Entry* const entry = database.Find(text);
    return entry ? entry->designation.ToUtf8().value() : "";
}

struct Spelling {
    const wchar_t* text;
    const char* designation;
};

TEST(BuiltInCatalogue, UnderstandsWhatStandardsAndMakersCallItsFamilies)
{
    const Spelling spellings[] = {
        {L"UKB 457x191x67", "UB 457x191x67"},
        {L"UKC 254x254x89", "UC 254x254x89"},
        {L"UKBP 305x305x95", "UBP 305x305x95"},
        {L"UKPFC 200x90x30", "PFC 200x90x30"},
        {L"RSC 200x90x30", "PFC 200x90x30"},
        {L"UKA 150x75x10", "L 150x75x10"},
        {L"RSA 150x75x10", "L 150x75x10"},
        {L"UA 150x75x10", "L 150x75x10"},
        {L"EA 100x100x10", "L 100x100x10"},
        {L"UKT 229x191x34", "T 229x191x34"},
        {L"UKT 191x229x34", "T 229x191x34"},
        {L"HFSHS 100x100x5", "SHS 100x100x5"},
        {L"HFRHS 200x100x6.3", "RHS 200x100x6.3"},
        {L"HFCHS 168.3x5", "CHS 168.3x5"},
        {L"HE 200 B", "HEB 200"},
        {L"HE200B", "HEB 200"},
        {L"he 200 a", "HEA 200"},
        {L"HE 1000 M", "HEM 1000"},
        {L"457x191x67 UB", "UB 457x191x67"},
        {L"457 x 191 x 67 UKB", "UB 457x191x67"},
        {L"457x191 UB 67", "UB 457x191x67"},
        {L"254x254 UKC 89", "UC 254x254x89"},
    };
    for (const Spelling& spelling : spellings)
        EXPECT_EQ(Found(*CSectDB::GetDatabase(), spelling.text), spelling.designation)
            << CString(spelling.text).ToUtf8().value();
}

TEST(BuiltInCatalogue, UnderstandsSizesHoweverTheyAreWritten)
{
    const Spelling spellings[] = {
        {L"CHS 168.3x5.0", "CHS 168.3x5"},
        {L"CHS 168.30x5.00", "CHS 168.3x5"},
        {L"CFCHS 168.3x5.", "CFCHS 168.3x5"},
        {L"UB 457.0x191x067", "UB 457x191x67"},
        {L"SHS 100x5", "SHS 100x100x5"},
        {L"SHS 100x5.0", "SHS 100x100x5"},
        {L"CFSHS 100x5", "CFSHS 100x100x5"},
        {L"L 100x10", "L 100x100x10"},
        {L"EA 100x10", "L 100x100x10"},
        {L"RHS 200*100*6.3", "RHS 200x100x6.3"},
        {L"RHS 100x100x5", "SHS 100x100x5"},
        {L"CFRHS 100x100x5.0", "CFSHS 100x100x5"},
        {L"IPE 300.0", "IPE 300"},
    };
    for (const Spelling& spelling : spellings)
        EXPECT_EQ(Found(*CSectDB::GetDatabase(), spelling.text), spelling.designation)
            << CString(spelling.text).ToUtf8().value();
}

// A section that is not the one meant is worse than none.
TEST(BuiltInCatalogue, DoesNotGuess)
{
    for (const wchar_t* const text : {L"EA 150x75x10",    L"UA 100x100x10",   L"UA 100x10",
                                      L"RHS 100x200x6.3", L"L 75x150x10",     L"SHS 200x100x6.3",
                                      L"RHS 100x5",       L"HE 200",          L"HE 200 C",
                                      L"HE 200 BB",       L"HEB 200 A",       L"UB 457x191x67 UB",
                                      L"UB 457x191x67.5", L"UB 457x191x67x1", L"CHS 168.3x5.0.0",
                                      L"CHS 168.3x.",     L"457x191x67",      L"UKX 457x191x67",
                                      L"UB 457x191x",     L"UB 457xx191x67",  L"UKB",
                                      L"RSC 203x76x24",   L"UB -457x191x67",  L"UB 4.57e2x191x67"})
        EXPECT_EQ(Found(*CSectDB::GetDatabase(), text), "") << CString(text).ToUtf8().value();
}

TEST(BuiltInCatalogue, EveryRowIsFoundUnderEverySpellingOfItsName)
{
    const std::map<std::wstring, std::vector<std::wstring>> others = {
        {L"UB", {L"UKB"}},        {L"UC", {L"UKC"}}, {L"UBP", {L"UKBP"}},  {L"PFC", {L"UKPFC", L"RSC"}},
        {L"L", {L"UKA", L"RSA"}}, {L"T", {L"UKT"}},  {L"SHS", {L"HFSHS"}}, {L"RHS", {L"HFRHS"}},
        {L"CHS", {L"HFCHS"}}};
    const CSectDB& database = *CSectDB::GetDatabase();
    for (const CSectDB::Entry& entry : database.Entries()) {
        const std::wstring family(entry.family.GetString());
        const std::wstring name(entry.designation.GetString());
        const std::string expected = entry.designation.ToUtf8().value();
        const std::wstring sizes = name.substr(family.size() + 1);
        EXPECT_EQ(Found(database, sizes + L" " + family), expected);
        EXPECT_EQ(
            Found(database,
                  family + L" " + sizes +
                      (sizes.find(L'.') < sizes.size() && sizes.rfind(L'.') > sizes.rfind(L'x') + 1 ? L"00" : L".0")),
            expected);
        if (const auto found = others.find(family); found != others.end()) {
            for (const std::wstring& other : found->second)
                EXPECT_EQ(Found(database, other + sizes), expected);
        }
        if (family.size() == 3 && family.compare(0, 2, L"HE") == 0) {
            EXPECT_EQ(Found(database, L"HE" + sizes + family[2]), expected);
        }
    }
}

TEST(CSectDB, AHostsOwnFamilyStandsForItself)
{
    CSectDB database;
    const std::string beam = "I,rolled,67.1,453.4,189.9,8.5,12.7,10.2,\n";
    ASSERT_EQ(Described(database.AddCsv(HEADER + "UB,457x191x67," + beam + "UKB,457x191x60," + beam)), "");
    EXPECT_EQ(Found(database, L"UKB 457x191x60.0"), "UKB 457x191x60");
    EXPECT_EQ(Found(database, L"UKB 457x191x67"), "");
    EXPECT_EQ(Found(database, L"UKC 457x191x67"), "");
}

TEST(CSectDB, ASpellingThatFitsTwoRowsFindsNeither)
{
    CSectDB database;
    const std::string beam = "I,rolled,67.1,453.4,189.9,8.5,12.7,10.2,\n";
    ASSERT_EQ(Described(database.AddCsv(HEADER + "UB,457x191x67," + beam + "UB,457x191x67.0," + beam)), "");
    EXPECT_EQ(Found(database, L"UB 457x191x67"), "UB 457x191x67");
    EXPECT_EQ(Found(database, L"UB 457x191x67.0"), "UB 457x191x67.0");
    EXPECT_EQ(Found(database, L"UB 457x191x67.00"), "");
}

TEST(BuiltInCatalogue, SuggestsWhatDiffersLeastInMeaning)
{
    struct Slip {
        const wchar_t* text;
        std::vector<CString> nearest;
    };
    const Slip slips[] = {
        {L"UB 457x191x68", {L"UB 457x191x67", L"UB 457x191x74", L"UB 457x191x82"}},
        {L"UKB 457x191x68", {L"UB 457x191x67", L"UB 457x191x74", L"UB 457x191x82"}},
        {L"UB 475x191x67", {L"UB 457x191x67", L"UB 457x191x74"}},
        {L"UC 457x191x67", {L"UB 457x191x67"}},
        {L"CHS 168.3x5.1", {L"CHS 168.3x5"}},
        {L"CHS 168x5", {L"CHS 168.3x5"}},
        {L"SHS 100x5.1", {L"SHS 100x100x5"}},
        {L"RHS 200x100x6", {L"RHS 200x100x6.3"}},
        {L"HE 200 C", {L"HEA 200", L"HEB 200", L"HEM 200"}},
        {L"HEB 208", {L"HEB 200", L"HEB 220"}},
        {L"L 75x150x10", {L"L 150x75x10"}},
        {L"RHS 100x200x6.3", {L"RHS 200x100x6.3"}},
        {L"RSC 203x76x24", {L"PFC 200x75x23"}},
        {L"457x191x67", {L"UB 457x191x67"}},
    };
    for (const Slip& slip : slips)
        EXPECT_EQ(CSectDB::GetDatabase()->Suggest(slip.text, slip.nearest.size()), slip.nearest)
            << CString(slip.text).ToUtf8().value();
}

TEST(BuiltInCatalogue, SuggestsTheRowItselfFirst)
{
    const CSectDB& database = *CSectDB::GetDatabase();
    for (std::size_t i = 0; i < database.Entries().size(); i += 7) {
        const CString& name = database.Entries()[i].designation;
        EXPECT_EQ(database.Suggest(name, 1), std::vector<CString>{name});
    }
}

TEST(BuiltInCatalogue, HoldsEveryRowOfTheFilesWithoutAnError)
{
    CSectDB database;
    int files = 0;
    for (const auto& file : std::filesystem::directory_iterator(KELTRIX_CATALOGUE_DIR)) {
        if (file.path().extension() != ".csv") continue;
        std::ifstream stream(file.path(), std::ios::binary);
        const std::string csv{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
        EXPECT_EQ(Described(database.AddCsv(csv)), "") << file.path();
        ++files;
    }
    ASSERT_GT(files, 0) << KELTRIX_CATALOGUE_DIR;
    const CSectDB& builtIn = *CSectDB::GetDatabase();
    EXPECT_EQ(builtIn.Entries().size(), database.Entries().size());
    for (const CSectDB::Entry& entry : database.Entries()) {
        const CSectDB::Entry* const found = builtIn.Find(entry.designation);
        ASSERT_NE(found, nullptr) << entry.designation.ToUtf8().value();
        EXPECT_EQ(found->depth, entry.depth) << entry.designation.ToUtf8().value();
        EXPECT_EQ(found->massPerMetre, entry.massPerMetre) << entry.designation.ToUtf8().value();
    }
    EXPECT_EQ(CSectDB::GetDatabase(), &builtIn);
}

TEST(BuiltInCatalogue, HoldsAWellKnownBeam)
{
    const CSectDB::Entry* const beam = CSectDB::GetDatabase()->Find(L"UB 457x191x67");
    ASSERT_NE(beam, nullptr);
    EXPECT_EQ(beam->depth, 453.4 / 1000.0);
    EXPECT_EQ(beam->width, 189.9 / 1000.0);
    EXPECT_EQ(beam->webThickness, 8.5 / 1000.0);
    EXPECT_EQ(beam->flangeThickness, 12.7 / 1000.0);
    EXPECT_EQ(beam->rootRadius, 10.2 / 1000.0);
    EXPECT_EQ(CSection(L"UB 457x191x67").Component(0).Type(), SEC_ROLLED);
}

TEST(BuiltInCatalogue, RestoresEverySectionFromItsDescription)
{
    const CSectDB* const database = CSectDB::GetDatabase();
    for (const CSectDB::Entry& entry : database->Entries()) {
        SCOPED_TRACE(entry.designation.ToUtf8().value());
        EXPECT_EQ(entry.designation.Find(L','), -1);
        CSecDB geometry(L"", database);
        ASSERT_TRUE(geometry.SetUpFromDesc(entry.designation));
        ASSERT_NE(geometry.Shape(), 0);
        EXPECT_EQ(geometry.Description(true), entry.designation);
        CSecDB back(L"", database);
        ASSERT_TRUE(back.SetUpFromDesc(geometry.Description(true)));
        EXPECT_EQ(back.Shape(), entry.shape);
        for (int i = 0; i < 16; ++i) {
            const auto prop = static_cast<CSecGeom::Prop>(i);
            EXPECT_EQ(back.Dimension(0.0, prop), geometry.Dimension(0.0, prop)) << i;
        }
        // Without its designation, the same dimensions come back through the parametric form.
        CSecGeom plain = geometry;
        plain.SetShape(geometry.Shape());
        CSecDB parametric(L"", nullptr);
        ASSERT_TRUE(parametric.SetUpFromDesc(plain.Description(true))) << plain.Description(true).ToUtf8().value();
        EXPECT_EQ(parametric.Dimension(0.0, CSecGeom::DEPTH), entry.depth);
        EXPECT_EQ(parametric.Dimension(0.0, CSecGeom::WEB_THICKNESS), entry.webThickness);
    }
}

} // namespace
} // namespace Keltrix
