#pragma once

// Random members in equilibrium for the tests of critical loads, each with its meaning for the second solution.

#include <algorithm>
#include <cstdlib>
#include <cwchar>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "stability/Beams.h"
#include "stability/SecondSolution.h"

namespace StabilityTest {

/// The number of random members of a test, which the environment can change.
inline int NumberOfMembers(int usual)
{
    const char* const text = std::getenv("SECOND_MEMBERS");
    return text ? std::max(1, std::atoi(text)) : usual;
}

// A restraint by its text and by what it means.
struct Held {
    const wchar_t* text;
    std::vector<SecondCondition> (*conditions)(const SectionConstants&);
};

using List = std::vector<SecondCondition>;
inline SecondCondition Lateral(double z) { return {false, 1.0, z}; }
inline SecondCondition Warping(double z) { return {true, 1.0, z}; }
inline const SecondCondition TWISTING{false, 0.0, 1.0};

inline const std::vector<Held> POINTS{
    {L"Free", [](const SectionConstants&) { return List{}; }},
    {L"F1L", [](const SectionConstants& s) { return List{Lateral(s.flange[0])}; }},
    {L"F2L", [](const SectionConstants& s) { return List{Lateral(s.flange[1])}; }},
    {L"MINV", [](const SectionConstants&) { return List{Lateral(0.0)}; }},
    {L"TR", [](const SectionConstants&) { return List{TWISTING}; }},
    {L"Pinned",
     [](const SectionConstants&) {
         return List{Lateral(0.0), TWISTING};
     }},
    {L"F1W", [](const SectionConstants& s) { return List{Warping(s.flange[0])}; }},
    {L"MINR", [](const SectionConstants&) { return List{Warping(0.0)}; }},
    {L"F12L TR MINRV",
     [](const SectionConstants&) {
         return List{Lateral(0.0), TWISTING, Warping(0.0)};
     }},
    {L"F1L F2W",
     [](const SectionConstants& s) {
         return List{Lateral(s.flange[0]), Warping(s.flange[1])};
     }},
    {L"Fixed", [](const SectionConstants& s) {
         return List{Lateral(0.0), TWISTING, Warping(s.flange[0]), Warping(s.flange[1])};
     }}};
inline const std::vector<Held> ALONG{{L"Free", [](const SectionConstants&) { return List{}; }},
                                     {L"F1L", [](const SectionConstants& s) { return List{Lateral(s.flange[0])}; }},
                                     {L"F2L", [](const SectionConstants& s) { return List{Lateral(s.flange[1])}; }},
                                     {L"MINV", [](const SectionConstants&) { return List{Lateral(0.0)}; }},
                                     {L"TR", [](const SectionConstants&) { return List{TWISTING}; }},
                                     {L"F1W", [](const SectionConstants& s) { return List{Warping(s.flange[0])}; }},
                                     {L"MINR", [](const SectionConstants&) { return List{Warping(0.0)}; }},
                                     {L"F1L F2W",
                                      [](const SectionConstants& s) {
                                          return List{Lateral(s.flange[0]), Warping(s.flange[1])};
                                      }},
                                     {L"F12W", [](const SectionConstants& s) {
                                          return List{Warping(s.flange[0]), Warping(s.flange[1])};
                                      }}};

// Where the section does not resist warping, a condition on φ' holds nothing: only the v' of both flanges together is left.
inline List WithoutWarping(const List& conditions)
{
    List kept;
    int flanges = 0;
    for (const SecondCondition& c : conditions) {
        if (!c.slope || c.phi == 0.0)
            kept.push_back(c);
        else
            ++flanges;
    }
    const bool both = flanges == 2 || (flanges == 1 && kept.size() < conditions.size() &&
                                       std::any_of(kept.begin(), kept.end(), [](const auto& c) { return c.slope; }));
    if (both) kept.push_back(Warping(0.0));
    return kept;
}

struct Pair {
    Member member;
    SecondMember second;
    std::string text;
};

class Generator {
public:
    explicit Generator(unsigned seed) : m_random(seed) {}

    Pair Make()
    {
        Pair pair;
        SecondMember& s = pair.second;
        std::ostringstream text;
        static const std::vector<CSection> SECTIONS = SectionsOfEveryKind();
        const int section = Whole(0, static_cast<int>(SECTIONS.size()) - 1);
        s.section = ConstantsOf(SECTIONS[static_cast<std::size_t>(section)]);
        text << "section " << section;
        const bool axial = !s.section.offWebPlane && Real(0, 1) < 0.5;
        const bool bent = !axial || Real(0, 1) < 0.8;
        const int count = Whole(1, 3);
        double x = 0.0;
        double moment = bent && Real(0, 1) < 0.5 ? Real(-1e5, 1e5) : 0.0;
        double shearBefore = 0.0; // dM/dx
        for (int k = 0; k <= count; ++k) {
            const bool end = k == 0 || k == count;
            const Held& held = end && Real(0, 1) < 0.8 ? POINTS[Real(0, 1) < 0.8 ? 5 : 10] : Any(POINTS, 0.4);
            SecondPoint point;
            point.x = x;
            point.conditions = Meaning(held, s.section);
            point.height = Real(0, 1) < 0.5 ? 0.0 : Real(-0.3, 0.3);
            AddPoint(pair.member, x, held.text);
            SetHeight(pair.member, pair.member.points.size() - 1, point.height);
            text << "; point " << x << " " << Narrow(held.text) << " height " << point.height;
            s.points.push_back(point);
            if (k == count) break;
            const double h = Real(0.8, 5.0);
            SecondSubSpan sub;
            sub.momentLeft = moment;
            sub.momentRight = !bent ? 0.0 : Real(0, 1) < 0.2 ? 0.0 : Real(-1e5, 1e5);
            sub.load = !bent || Real(0, 1) < 0.4 ? 0.0 : Real(-4e4, 4e4);
            sub.height = Real(0, 1) < 0.5 ? 0.0 : Real(-0.3, 0.3);
            if (axial) {
                sub.compressionLeft = Real(-3e5, 5e5);
                sub.compressionRight = Real(0, 1) < 0.5 ? sub.compressionLeft : Real(-3e5, 5e5);
            }
            const Held& along = Any(ALONG, 0.7);
            sub.along = Meaning(along, s.section);
            const double shear = (sub.momentRight - sub.momentLeft) / h + sub.load * h / 2.0;
            s.points.back().load = -(shear - shearBefore);
            shearBefore = (sub.momentRight - sub.momentLeft) / h - sub.load * h / 2.0;
            // Myy = -M, Fz = dMyy/dx.
            AddSubSpan(pair.member, -shear, -shearBefore, -sub.momentLeft, -sub.momentRight, along.text);
            SetForces(pair.member, sub);
            SetHeightAlong(pair.member, pair.member.subSpans.size() - 1, sub.height);
            text << "; sub-span " << h << " M " << sub.momentLeft << " " << sub.momentRight << " q " << sub.load
                 << " height " << sub.height << " N " << sub.compressionLeft << " " << sub.compressionRight << " "
                 << Narrow(along.text);
            s.subSpans.push_back(sub);
            x += h;
            moment = bent && Real(0, 1) < 0.2 ? Real(-1e5, 1e5) : sub.momentRight;
        }
        s.points.back().load = shearBefore;
        pair.text = text.str();
        return pair;
    }

private:
    double Real(double a, double b) { return std::uniform_real_distribution<double>(a, b)(m_random); }
    int Whole(int a, int b) { return std::uniform_int_distribution<int>(a, b)(m_random); }
    const Held& Any(const std::vector<Held>& from, double free)
    {
        return Real(0, 1) < free ? from[0]
                                 : from[static_cast<std::size_t>(Whole(1, static_cast<int>(from.size()) - 1))];
    }
    static List Meaning(const Held& held, const SectionConstants& s)
    {
        const List all = held.conditions(s);
        return s.Iw == 0.0 ? WithoutWarping(all) : all;
    }
    static std::string Narrow(const wchar_t* text) { return {text, text + std::wcslen(text)}; }
    static void SetForces(Member& m, const SecondSubSpan& sub)
    {
        auto& s = m.subSpans.back();
        auto left = s.GetForcesLeft();
        auto right = s.GetForcesRight();
        left.x = -sub.compressionLeft;
        right.x = -sub.compressionRight;
        s.SetForcesAll(left, right);
    }

    std::mt19937 m_random;
};

} // namespace StabilityTest
