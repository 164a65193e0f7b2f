// Members in equilibrium, written as each preset would have them by a table of this test, which knows directions and faces instead of signs
// against the member file.

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <random>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "import/ImportSupport.h"
#include "support/RandomCases.h"

namespace Keltrix::ImportTest {
namespace {

using ::testing::HasSubstr;

// What acts on the face that looks along the member, by directions: tension, upwards along the web, to the left of who looks along the
// member, torsion, sagging (tension at the bottom), moment with tension on the right. On any piece sagging grows by the force downwards, and
// the moment with tension on the right by the force to the right.
struct State {
    double tension = 0.0, up = 0.0, left = 0.0, torsion = 0.0, sagging = 0.0, right = 0.0;
};

using Row = std::array<double, IMPORTED_ACTIONS>; // N, Vy, Vz, T, My, Mz

// The sketches of docs/import.md in words.
const std::map<std::string, Row (*)(const State&)>& Presets()
{
    static const std::map<std::string, Row (*)(const State&)> presets{
        // x along, y left, z up; forces and moments on the face along x, moments by the right hand
        {"member-file", [](const State& s) { return Row{s.tension, s.left, s.up, s.torsion, -s.sagging, s.right}; }},
        // x along, y right, z down
        {"z-down", [](const State& s) { return Row{s.tension, -s.left, -s.up, s.torsion, s.sagging, -s.right}; }},
        // axes of the member file, all of the other face
        {"start-face", [](const State& s) { return Row{-s.tension, -s.left, -s.up, -s.torsion, s.sagging, -s.right}; }},
        // shear is the slope of the moment
        {"sagging", [](const State& s) { return Row{s.tension, -s.left, -s.up, s.torsion, s.sagging, s.right}; }},
        {"sagging-compression",
         [](const State& s) { return Row{-s.tension, -s.left, -s.up, s.torsion, s.sagging, s.right}; }},
        // forces along y left and z up, moments with tension on the negative sides
        {"z-up-sagging", [](const State& s) { return Row{s.tension, s.left, s.up, s.torsion, s.sagging, s.right}; }},
        // x along, y up, z right
        {"y-up", [](const State& s) { return Row{s.tension, s.up, -s.left, s.torsion, s.right, s.sagging}; }},
        // the same with the shears of the other face
        {"y-up-start-shear",
         [](const State& s) { return Row{s.tension, -s.up, s.left, s.torsion, s.right, s.sagging}; }},
    };
    return presets;
}

// dM/dx over V in the plane of the web and across it, from a state and what its moment grows by.
std::pair<double, double> LawsOf(Row (*write)(const State&))
{
    const auto sum = [](const Row& row, std::size_t y, std::size_t z) { return row[y] + row[z]; };
    State major, minor;
    major.up = -1.0;
    major.sagging = 1.0;
    minor.left = -1.0;
    minor.right = 1.0;
    const auto law = [&](const Row& row) { return sum(row, ACTION_MY, ACTION_MZ) / sum(row, ACTION_VY, ACTION_VZ); };
    return {law(write(major)), law(write(minor))};
}

struct Station {
    double at;
    State left, right;
};
struct TestCase {
    std::vector<Station> stations;
};

class Random {
public:
    explicit Random(unsigned seed) : m_engine(seed) {}
    double Between(double least, double most) { return std::uniform_real_distribution<>(least, most)(m_engine); }
    int Whole(int least, int most) { return std::uniform_int_distribution<>(least, most)(m_engine); }
    bool Happens(double share) { return Between(0.0, 1.0) < share; }

private:
    std::mt19937 m_engine;
};

// Uniform loads between stations, point loads, couples of no kind; forces in N.
TestCase RandomCase(Random& random, const std::vector<double>& places, bool hasMinor)
{
    TestCase one;
    State now;
    now.tension = random.Between(-1e6, 1e6);
    now.torsion = random.Between(-1e3, 1e3);
    now.up = random.Between(-2e5, 2e5);
    now.sagging = random.Happens(0.5) ? 0.0 : random.Between(-2e5, 2e5);
    if (hasMinor) {
        now.left = random.Between(-2e4, 2e4);
        now.right = random.Between(-2e4, 2e4);
    }
    one.stations.push_back({places.front(), now, now});
    for (std::size_t i = 1; i < places.size(); ++i) {
        const double h = places[i] - places[i - 1];
        State next = now;
        next.up += random.Between(-1e4, 1e4) * h;
        next.sagging -= 0.5 * (now.up + next.up) * h;
        if (hasMinor) {
            next.left += random.Between(-1e3, 1e3) * h;
            next.right -= 0.5 * (now.left + next.left) * h;
        }
        Station station{places[i], next, next};
        if (i + 1 < places.size() && random.Happens(0.3)) {
            station.right.up += random.Between(-1e5, 1e5);
            station.right.tension += random.Between(-1e5, 1e5);
        }
        one.stations.push_back(station);
        now = station.right;
    }
    return one;
}

struct TestMember {
    std::vector<double> places;
    std::vector<TestCase> cases;
    bool hasMinor = true;
};

TestMember RandomMember(Random& random)
{
    TestMember member;
    member.hasMinor = random.Happens(0.8);
    const int pieces = random.Whole(1, 12);
    double x = 0.0;
    for (int i = 0; i <= pieces; ++i) {
        member.places.push_back(x);
        x += random.Between(0.1, 2.0);
    }
    for (int i = random.Whole(1, 3); i-- > 0;)
        member.cases.push_back(RandomCase(random, member.places, member.hasMinor));
    return member;
}

std::string Written(const TestMember& member, Row (*write)(const State&))
{
    std::string text = "Member;Case;x [mm];N [kN];Vy [kN];Vz [kN];T [kNm];My [kNm];Mz [kNm]\n";
    for (std::size_t i = 0; i < member.cases.size(); ++i) {
        const auto line = [&](double at, const State& state) {
            text += "B1;LC" + std::to_string(i + 1) + ';' + Shortest(1e3 * at);
            for (const double value : write(state))
                text += ';' + Shortest(value / 1e3);
            text += '\n';
        };
        for (const Station& station : member.cases[i].stations) {
            line(station.at, station.left);
            if (station.left.up != station.right.up) line(station.at, station.right);
        }
    }
    return text;
}

std::string MembersTable(const TestMember& member)
{
    return "member;section;grade;length [m];start;end\nB1;UB 457x191x67;S275;" + Shortest(member.places.back()) +
           ";Pinned;Pinned\n";
}

void ExpectActions(const Vec3<double>& forces, const Vec3<double>& moments, const State& state, double force,
                   double moment, const std::string& what)
{
    EXPECT_NEAR(forces.x, state.tension, 1e-9 * force) << what;
    EXPECT_NEAR(forces.y, state.left, 1e-9 * force) << what;
    EXPECT_NEAR(forces.z, state.up, 1e-9 * force) << what;
    EXPECT_NEAR(moments.x, state.torsion, 1e-9 * moment) << what;
    EXPECT_NEAR(moments.y, -state.sagging, 1e-9 * moment) << what;
    EXPECT_NEAR(moments.z, state.right, 1e-9 * moment) << what;
}

void ExpectMember(const Import& import, const TestMember& member, const std::string& what)
{
    const ReadBack read(import);
    ASSERT_EQ(read.Count(), member.cases.size()) << what << Messages(import);
    for (std::size_t i = 0; i < member.cases.size(); ++i) {
        const auto& points = read.Member(i).MemberPoints();
        const auto& subSpans = read.Member(i).SubSpans();
        const auto& stations = member.cases[i].stations;
        ASSERT_EQ(points.size(), stations.size()) << what;
        for (std::size_t k = 0; k < points.size(); ++k)
            EXPECT_NEAR(points[k].GetPos(), stations[k].at, 1e-9 * member.places.back()) << what;
        for (std::size_t k = 0; k < subSpans.size(); ++k) {
            ExpectActions(subSpans[k].GetForcesLeft(), subSpans[k].GetMomentsLeft(), stations[k].right, 1e6, 1e5, what);
            ExpectActions(subSpans[k].GetForcesRight(), subSpans[k].GetMomentsRight(), stations[k + 1].left, 1e6, 1e5,
                          what);
        }
    }
}

TEST(SignConventions, TheTableOfThisTestHasAllOfThem)
{
    ASSERT_EQ(SignConventions().size(), Presets().size());
    for (const SignConvention& one : SignConventions())
        EXPECT_EQ(Presets().count(one.name), 1u) << one.name;
}

// 120 kN at the middle of 6 m: the left support pushes 60 kN upwards, so that the face along x has 60 kN downwards, and 180 kNm sag.
TEST(SignConventions, ABeamByHandInEachOfThem)
{
    const std::string members = "member,section,grade,start,end\nB1,UB 457x191x67,S275,Pinned,Pinned\n";
    const std::string head = "member,case,station [m],N [kN],Vy [kN],Vz [kN],T [kNm],My [kNm],Mz [kNm]\n";
    const std::map<std::string, std::vector<std::string>> tables{
        {"member-file", {"0,0,-60,0,0,0", "0,0,-60,0,-180,0", "0,0,60,0,-180,0", "0,0,60,0,0,0"}},
        {"z-down", {"0,0,60,0,0,0", "0,0,60,0,180,0", "0,0,-60,0,180,0", "0,0,-60,0,0,0"}},
        {"start-face", {"0,0,60,0,0,0", "0,0,60,0,180,0", "0,0,-60,0,180,0", "0,0,-60,0,0,0"}},
        {"sagging", {"0,0,60,0,0,0", "0,0,60,0,180,0", "0,0,-60,0,180,0", "0,0,-60,0,0,0"}},
        {"sagging-compression", {"0,0,60,0,0,0", "0,0,60,0,180,0", "0,0,-60,0,180,0", "0,0,-60,0,0,0"}},
        {"z-up-sagging", {"0,0,-60,0,0,0", "0,0,-60,0,180,0", "0,0,60,0,180,0", "0,0,60,0,0,0"}},
        {"y-up", {"0,-60,0,0,0,0", "0,-60,0,0,0,180", "0,60,0,0,0,180", "0,60,0,0,0,0"}},
        {"y-up-start-shear", {"0,60,0,0,0,0", "0,60,0,0,0,180", "0,-60,0,0,0,180", "0,-60,0,0,0,0"}},
    };
    ASSERT_EQ(tables.size(), SignConventions().size());
    for (const auto& [preset, rows] : tables) {
        std::string forces = head;
        const char* const places[] = {"0", "3", "3", "6"};
        for (std::size_t i = 0; i < rows.size(); ++i)
            forces += std::string("B1,LC1,") + places[i] + ',' + rows[i] + '\n';
        const Import import = Imported(forces, members, {preset});
        ASSERT_FALSE(import.HasErrors()) << preset << '\n' << Messages(import);
        EXPECT_THAT(import.text, HasSubstr("SUBSPAN,1,0,0,-60000,0,0,-60000,0,0,0,0,-180000,0,Free,0\n"
                                           "SUBSPAN,2,0,0,60000,0,0,60000,0,-180000,0,0,0,0,Free,0\n"))
            << preset;
    }
}

TEST(SignConventions, RandomMembersComeBackFromEach)
{
    const unsigned seed = 20260;
    Random random(seed);
    for (int i = 0; i < TestSupport::RandomCases(300); ++i) {
        const TestMember member = RandomMember(random);
        for (const auto& [name, write] : Presets()) {
            const std::string what = name + ", member " + std::to_string(i) + ", seed " + std::to_string(seed) + '\n';
            const Import import = Imported(Written(member, write), MembersTable(member), {name});
            ASSERT_FALSE(import.HasErrors()) << what << Messages(import);
            ExpectMember(import, member, what);
            if (HasFailure()) return;
        }
    }
}

// Whether moments of a plane change by more than 1 % of their largest, so that shears of the other sign cannot balance them.
bool IsSeen(const TestMember& member, double State::*moment)
{
    return std::any_of(member.cases.begin(), member.cases.end(), [&](const TestCase& one) {
        double least = 0.0, greatest = 0.0, largest = 0.0, change = 0.0;
        for (std::size_t k = 0; k < one.stations.size(); ++k) {
            if (k > 0) change += one.stations[k].left.*moment - one.stations[k - 1].right.*moment;
            least = std::min(least, change);
            greatest = std::max(greatest, change);
            largest = std::max(largest, std::abs(one.stations[k].left.*moment));
        }
        return greatest - least > 0.01 * largest;
    });
}

// A wrong preset is refused with the right one among those that would balance, or accepted because shears and moments are related as in
// the right one; then a note names the right one.
TEST(SignConventions, AWrongOneIsRefusedWhereverThatCanBeSeen)
{
    const unsigned seed = 777;
    Random random(seed);
    int refused = 0;
    int accepted = 0;
    for (int i = 0; i < TestSupport::RandomCases(100); ++i) {
        const TestMember member = RandomMember(random);
        for (const auto& [right, write] : Presets()) {
            const std::string forces = Written(member, write);
            const bool isRightAlongZ = write(State{0, 1, 0, 0, 0, 0})[ACTION_VZ] != 0.0;
            for (const auto& [wrong, other] : Presets()) {
                if (wrong == right) continue;
                const bool isWrongAlongZ = other(State{0, 1, 0, 0, 0, 0})[ACTION_VZ] != 0.0;
                // The plane of the web of one preset is the plane across it of another one with the web along the other axis.
                auto laws = LawsOf(other);
                if (isRightAlongZ != isWrongAlongZ) std::swap(laws.first, laws.second);
                const bool isSeen =
                    (laws.first != LawsOf(write).first && IsSeen(member, &State::sagging)) ||
                    (laws.second != LawsOf(write).second && member.hasMinor && IsSeen(member, &State::right));
                const Import import = Imported(forces, MembersTable(member), {wrong});
                const std::string what = right + " read as " + wrong + ", member " + std::to_string(i) + ", seed " +
                                         std::to_string(seed) + '\n' + Messages(import);
                EXPECT_THAT(Messages(import), HasSubstr(right)) << what;
                if (isSeen) {
                    EXPECT_TRUE(import.HasErrors()) << what;
                    EXPECT_THAT(Messages(import), HasSubstr("they would as ")) << what;
                    EXPECT_EQ(import.text, "") << what;
                }
                ++(import.HasErrors() ? refused : accepted);
                if (HasFailure()) return;
            }
        }
    }
    EXPECT_GT(refused, accepted);
    EXPECT_GT(accepted, 0) << "member-file, z-down, start-face and y-up differ in nothing that balance sees";
}

// What no balance shows, as the documents say: pairs of presets that take any table of each other.
TEST(SignConventions, WhatCannotBeSeen)
{
    Random random(5);
    TestMember member = RandomMember(random);
    member.hasMinor = true;
    member.cases = {RandomCase(random, member.places, true)};
    const std::pair<const char*, const char*> pairs[] = {{"sagging", "sagging-compression"},
                                                         {"member-file", "z-down"},
                                                         {"member-file", "start-face"},
                                                         {"z-down", "y-up"}};
    for (const auto& [a, b] : pairs) {
        const Import import = Imported(Written(member, Presets().at(a)), MembersTable(member), {b});
        EXPECT_FALSE(import.HasErrors()) << a << ' ' << b << Messages(import);
        EXPECT_THAT(Messages(import), HasSubstr("is not checked")) << b;
    }
}

} // namespace
} // namespace Keltrix::ImportTest
