// Random members in equilibrium: sections of every family, restraints of all kinds, loads at points and along.

#include "RandomMembers.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <random>
#include <sstream>
#include <stdexcept>

#include "keltrix/steel/Restraint.h"

namespace Second {

namespace {

using Bits = Keltrix::Data::CRestraint;

class Dice {
public:
    explicit Dice(std::uint64_t seed) : m_engine(seed) {}
    double Between(double a, double b) { return std::uniform_real_distribution<double>(a, b)(m_engine); }
    bool Chance(double p) { return Between(0.0, 1.0) < p; }
    int Below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(m_engine); }
    template <class T>
    const T& Of(const std::vector<T>& list)
    {
        return list[static_cast<std::size_t>(Below(static_cast<int>(list.size())))];
    }
    double Sign() { return Chance(0.5) ? 1.0 : -1.0; }

private:
    std::mt19937_64 m_engine;
};

struct Row {
    std::string family, designation, shape, type;
    double depth = 0.0, width = 0.0, web = 0.0, flange = 0.0, root = 0.0, toe = 0.0;
};

std::vector<Row> ReadRows(const std::vector<std::string>& files)
{
    std::vector<Row> rows;
    for (const std::string& file : files) {
        std::ifstream in(std::string(KELTRIX_CATALOGUE_DIR) + "/" + file + ".csv");
        std::string line;
        bool caption = true;
        while (std::getline(in, line)) {
            if (line.empty() || line[0] == '#') continue;
            if (caption) {
                caption = false;
                continue;
            }
            std::vector<std::string> f;
            std::stringstream fields(line);
            for (std::string field; std::getline(fields, field, ',');)
                f.push_back(field);
            if (f.size() < 11) throw std::runtime_error("catalogue row: " + line);
            Row r{f[0], f[1], f[2], f[3]};
            double* to[6] = {&r.depth, &r.width, &r.web, &r.flange, &r.root, &r.toe};
            for (std::size_t k = 0; k < 6; ++k)
                *to[k] = std::stod(f[5 + k]);
            rows.push_back(r);
        }
        if (caption) throw std::runtime_error("no catalogue " + file);
    }
    return rows;
}

const std::vector<Row>& RowsOf(Family family)
{
    static const std::vector<Row> I = ReadRows({"ub", "uc", "ubp", "ipe", "he"}), channels = ReadRows({"pfc", "upe"}),
                                  tees = ReadRows({"tees"}), angles = ReadRows({"angles_equal", "angles_unequal"}),
                                  hollow = ReadRows({"rhs_hf", "rhs_cf", "shs_hf", "shs_cf"}),
                                  tubes = ReadRows({"chs_hf", "chs_cf"});
    switch (family) {
    case Family::Channel:
        return channels;
    case Family::Tee:
        return tees;
    case Family::Angle:
        return angles;
    case Family::Hollow:
        return hollow;
    case Family::Tube:
        return tubes;
    default:
        return I;
    }
}

struct Described {
    Section section;
    std::string text, type;
};

Shape ShapeOf(Family family)
{
    switch (family) {
    case Family::Channel:
        return Shape::Channel;
    case Family::Tee:
        return Shape::Tee;
    case Family::Angle:
        return Shape::Angle;
    case Family::Hollow:
        return Shape::Box;
    case Family::Tube:
        return Shape::Tube;
    default:
        return Shape::I;
    }
}

Described FromCatalogue(Family family, Dice& dice)
{
    const Row& row = dice.Of(RowsOf(family));
    Described d;
    Section& s = d.section;
    s.shape = ShapeOf(family);
    s.D = 1e-3 * row.depth, s.B = s.B2 = 1e-3 * row.width, s.t = 1e-3 * row.web, s.T = s.T2 = 1e-3 * row.flange;
    s.r = 1e-3 * row.root, s.rToe = 1e-3 * row.toe;
    d.text = row.family + " " + row.designation;
    const bool formed = row.type == "formed";
    s.make = formed ? Make::Formed : Make::Rolled;
    d.type = formed ? dice.Of<std::string>({"FORMED", "FORMED", "UNDEF", "ROLLED"})
                    : dice.Of<std::string>({"ROLLED", "ROLLED", "UNDEF"});
    if (s.shape == Shape::I && dice.Chance(0.08)) {
        d.type = "WELDED";
        s.make = Make::Welded;
    }
    return d;
}

double Whole(double mm) { return std::max(1.0, std::round(mm)); }

std::string Written(const char* word, std::initializer_list<double> mm)
{
    std::string text = word;
    bool first = true;
    for (const double v : mm) {
        char number[32];
        std::snprintf(number, sizeof number, "%s%g", first ? " " : "x", v);
        text += number;
        first = false;
    }
    return text;
}

/// A parametric section of whole millimetres.
Described FromDimensions(Family family, Dice& dice)
{
    Described d;
    Section& s = d.section;
    s.shape = ShapeOf(family);
    const bool undefined = dice.Chance(0.3), rolled = dice.Chance(0.25);
    s.make = rolled ? Make::Rolled : Make::Welded;
    d.type = rolled ? "ROLLED" : undefined ? "UNDEF" : "WELDED";
    double r = dice.Chance(rolled ? 0.8 : 0.04) ? Whole(dice.Between(5, 20)) : 0.0;
    double D = Whole(dice.Between(120, 900)), B = Whole(D * dice.Between(0.25, 0.9)), T = 0.0, t = 0.0, B2 = 0.0,
           T2 = 0.0, rt = 0.0;
    switch (s.shape) {
    case Shape::I: {
        if (dice.Chance(0.5)) D = Whole(dice.Between(400, 1800)), B = Whole(D * dice.Between(0.15, 0.5));
        T = std::max(Whole(0.5 * B / dice.Between(4, 20)), 4.0);
        t = std::max(Whole(D / (dice.Chance(0.1) ? dice.Between(100, 270) : dice.Between(20, 110))), 3.0);
        B2 = B, T2 = T;
        if (family == Family::UnequalI) { // without fillets: there is no published torsion constant with them
            r = 0.0;
            B2 = Whole(B * dice.Between(0.4, 1.6));
            T2 = std::max(4.0, Whole(T * dice.Between(0.5, 1.8)));
            d.text = Written("GI", {D, B, B2, t, T, T2});
        } else {
            d.text = r > 0.0 ? Written("I", {D, B, t, T, r}) : Written("I", {D, B, t, T});
        }
        break;
    }
    case Shape::Channel:
        D = Whole(dice.Between(80, 450)), B = Whole(D * dice.Between(0.2, 0.5));
        T = std::max(4.0, Whole(B / dice.Between(4, 16))), t = std::max(3.0, Whole(D / dice.Between(15, 60)));
        d.text = r > 0.0 ? Written("C", {D, B, t, T, r}) : Written("C", {D, B, t, T});
        break;
    case Shape::Tee:
        D = Whole(dice.Between(60, 400)), B = Whole(D * dice.Between(0.4, 1.6));
        T = std::max(4.0, Whole(0.5 * B / dice.Between(4, 16))), t = std::max(3.0, Whole(D / dice.Between(6, 30)));
        d.text = r > 0.0 ? Written("TEE", {D, B, t, T, r}) : Written("TEE", {D, B, t, T});
        break;
    case Shape::Angle:
        D = Whole(dice.Between(40, 250)), B = dice.Chance(0.4) ? D : Whole(D * dice.Between(0.4, 1.8));
        t = T = std::max(3.0, Whole(std::max(D, B) / dice.Between(6, 18)));
        if (r > 0.0 && r > 0.3 * t && r + t < 0.4 * std::min(D, B)) {
            rt = Whole(0.5 * std::min(r, t));
            d.text = Written("ANGLE", {D, B, t, r, rt});
        } else {
            d.text = Written("ANGLE", {D, B, t});
        }
        break;
    case Shape::Box:
        D = Whole(dice.Between(80, 700)), B = Whole(D * dice.Between(0.4, 1.4));
        t = std::max(3.0, Whole(D / dice.Between(10, 70))),
        T = rolled ? t : std::max(3.0, Whole(B / dice.Between(10, 60)));
        d.text = Written("BOX", {D, B, t, T});
        break;
    case Shape::Tube:
        D = Whole(dice.Between(40, 800)), B = D, t = T = std::max(2.0, Whole(D / dice.Between(10, 170)));
        d.text = Written("TUBE", {D, t});
        break;
    }
    const bool corners = s.shape == Shape::I || s.shape == Shape::Channel || s.shape == Shape::Tee || rt > 0.0;
    s.D = 1e-3 * D, s.B = 1e-3 * B, s.t = 1e-3 * t, s.T = 1e-3 * T, s.B2 = 1e-3 * B2, s.T2 = 1e-3 * T2;
    s.r = corners ? 1e-3 * r : 0.0, s.rToe = 1e-3 * rt;
    return d;
}

bool IsSection(const Section& s)
{
    if (s.shape == Shape::Tube) return s.t < 0.4 * s.D;
    const double side = s.shape == Shape::I ? std::min(s.B, s.B2) : s.B;
    if (s.shape == Shape::Box)
        return 2.0 * s.t < 0.6 * s.B && 2.0 * s.T < 0.6 * s.D &&
               (s.make == Make::Welded || 7.0 * s.t < std::min(s.B, s.D));
    if (s.shape == Shape::Angle) return 2.5 * s.t < std::min(s.B, s.D);
    if (s.shape != Shape::I && (s.t > 1.8 * s.T || s.t < 0.35 * s.T)) return false;
    const double depth = s.D - s.T - (s.shape == Shape::I ? s.T2 : s.shape == Shape::Channel ? s.T : 0.0);
    return depth > 2.5 * s.r + 0.3 * s.D && 0.5 * (side - s.t) > 1.2 * s.r && s.t < 0.5 * side;
}

Described MakeSection(Family family, Dice& dice)
{
    const double parametric = family == Family::RolledI                                ? 0.0
                              : family == Family::PlateI || family == Family::UnequalI ? 1.0
                                                                                       : 0.3;
    const bool fromDimensions = dice.Chance(parametric);
    for (;;) {
        Described d = fromDimensions ? FromDimensions(family, dice) : FromCatalogue(family, dice);
        if (!fromDimensions || IsSection(d.section)) return d;
    }
}

// Loads

struct Loads {
    std::vector<double> along; ///< on each sub-span
    std::vector<double> at;    ///< at each point
};

Loads RandomLoads(std::size_t subs, Dice& dice)
{
    Loads loads{std::vector<double>(subs, 0.0), std::vector<double>(subs + 1, 0.0)};
    const bool uniform = dice.Chance(0.6), points = !uniform || dice.Chance(0.4);
    const double w = dice.Between(0.2, 1.0);
    for (double& value : loads.along)
        value = !uniform ? 0.0 : dice.Chance(0.7) ? w : dice.Chance(0.3) ? -w : dice.Between(-1.0, 1.0);
    if (points)
        for (double& value : loads.at)
            value = dice.Chance(0.6) ? dice.Between(-1.0, 2.0) : 0.0;
    return loads;
}

struct Curve {
    std::vector<double> V[2], M[2]; ///< by sub-span, left and right
};

/// Shears and moments of one bay between two places that carry, from the moments there, or of a length that one end
/// carries alone, from what stands at the free end.
class Bays {
public:
    Bays(const std::vector<double>& x, const Loads& loads) : m_x(x), m_loads(loads)
    {
        for (int e = 0; e < 2; ++e)
            m_curve.V[e].assign(x.size() - 1, 0.0), m_curve.M[e].assign(x.size() - 1, 0.0);
    }

    void Span(std::size_t from, std::size_t to, double Ma, double Mb)
    {
        Run(from, to, Ma, 0.0);
        const double V = (Mb - m_curve.M[1][to - 1]) / (m_x[to] - m_x[from]);
        Run(from, to, Ma, V);
    }
    double FromLeftTip(std::size_t to, double tipMoment)
    {
        Run(0, to, tipMoment, m_loads.at[0]);
        return m_curve.M[1][to - 1];
    }
    double ToRightTip(std::size_t from, double tipMoment)
    {
        const std::size_t last = m_x.size() - 1;
        Run(from, last, 0.0, 0.0);
        const double V = -m_loads.at[last] - m_curve.V[1][last - 1];
        Run(from, last, 0.0, V);
        const double M = tipMoment - m_curve.M[1][last - 1];
        Run(from, last, M, V);
        return M;
    }
    const Curve& Result() const { return m_curve; }

private:
    void Run(std::size_t from, std::size_t to, double M, double V)
    {
        for (std::size_t i = from; i < to; ++i) {
            const double L = m_x[i + 1] - m_x[i], w = m_loads.along[i];
            if (i > from) V += m_loads.at[i];
            m_curve.V[0][i] = V, m_curve.M[0][i] = M;
            M += V * L + 0.5 * w * L * L;
            V += w * L;
            m_curve.V[1][i] = V, m_curve.M[1][i] = M;
        }
    }
    const std::vector<double>& m_x;
    const Loads& m_loads;
    Curve m_curve;
};

Curve Bend(const std::vector<double>& x, const std::vector<std::size_t>& carriers, bool leftTip, bool rightTip,
           Dice& dice)
{
    const Loads loads = RandomLoads(x.size() - 1, dice);
    Bays bays(x, loads);
    const double L = x.back() - x.front();
    const auto moment = [&] { return dice.Chance(0.5) ? 0.0 : dice.Between(-0.15, 0.15) * L * L; };
    const auto tipMoment = [&] { return dice.Chance(0.15) ? dice.Between(-0.05, 0.05) * L * L : 0.0; };
    double M = leftTip ? bays.FromLeftTip(carriers.front(), tipMoment()) : moment();
    const double right = rightTip ? bays.ToRightTip(carriers.back(), tipMoment()) : moment();
    for (std::size_t k = 0; k + 1 < carriers.size(); ++k) {
        const bool last = k + 2 == carriers.size();
        const double next = last ? right : moment();
        bays.Span(carriers[k], carriers[k + 1], M, next);
        M = next;
    }
    return bays.Result();
}

double Largest(const std::vector<double> (&v)[2])
{
    double most = 0.0;
    for (const auto& side : v)
        for (const double value : side)
            most = std::max(most, std::fabs(value));
    return most;
}

double LargestMoment(const Curve& c, const std::vector<double>& x)
{
    double most = Largest(c.M);
    for (std::size_t i = 0; i + 1 < x.size(); ++i)
        if (c.V[0][i] * c.V[1][i] < 0.0) {
            const double L = x[i + 1] - x[i], s = c.V[0][i] / (c.V[0][i] - c.V[1][i]) * L;
            most = std::max(most, std::fabs(c.M[0][i] + 0.5 * c.V[0][i] * s));
        }
    return most;
}

// Restraints

unsigned SupportBits(Dice& dice)
{
    static const std::vector<unsigned> list{
        Bits::PINNED,
        Bits::PINNED,
        Bits::PINNED,
        Bits::PINNED,
        Bits::ENCASTRE,
        Bits::FULL_ROTATIONAL,
        Bits::PARTIAL_ROTATIONAL,
        Bits::PINNED | Bits::FLANGE1_WARPING,
        Bits::PINNED | Bits::FLANGE1_WARPING | Bits::FLANGE2_WARPING,
        Bits::PINNED | Bits::FLANGE1_WARPING_PART | Bits::FLANGE2_WARPING_PART,
        Bits::PINNED | Bits::FLANGE2_WARPING_PART,
        Bits::PINNED | Bits::MAJOR_ROTATION,
        Bits::PINNED | Bits::MINOR_ROTATION_PART,
        Bits::PINNED | Bits::MINOR_ROTATION,
        Bits::PINNED | Bits::MAJOR_ROTATION_PART | Bits::COMP_FLANGE_WARPING,
        Bits::MAJOR_SHEAR | Bits::FLANGE1_LATERAL,
        Bits::MAJOR_SHEAR | Bits::FLANGE1_LATERAL | Bits::TORSION_PART,
        Bits::MAJOR_SHEAR | Bits::FLANGE2_LATERAL | Bits::TORSION_PART,
        Bits::MAJOR_SHEAR | Bits::FLANGE2_LATERAL | Bits::TORSION_FRICTION,
        Bits::MAJOR_SHEAR | Bits::MINOR_SHEAR | Bits::TORSION,
        Bits::MAJOR_SHEAR | Bits::MINOR_SHEAR | Bits::TORSION_PART | Bits::FLANGE1_LATERAL,
        Bits::MAJOR_SHEAR | Bits::MINOR_SHEAR | Bits::FLANGE1_LATERAL | Bits::TORSION_FRICTION,
        Bits::MAJOR_SHEAR | Bits::TORSION};
    return dice.Of(list);
}

unsigned InnerBits(Dice& dice)
{
    static const std::vector<unsigned> list{0u,
                                            0u,
                                            0u,
                                            Bits::FLANGE1_LATERAL,
                                            Bits::FLANGE1_LATERAL,
                                            Bits::FLANGE2_LATERAL,
                                            Bits::FLANGE1_LATERAL | Bits::FLANGE2_LATERAL,
                                            Bits::FLANGE1_LATERAL | Bits::FLANGE2_LATERAL,
                                            Bits::COMP_FLANGE_LATERAL,
                                            Bits::COMP_FLANGE_LATERAL,
                                            Bits::TENS_FLANGE_LATERAL,
                                            Bits::TORSION,
                                            Bits::TORSION | Bits::FLANGE1_LATERAL,
                                            Bits::MINOR_SHEAR,
                                            Bits::TORSION_PART | Bits::FLANGE1_LATERAL,
                                            Bits::TORSION_PART | Bits::COMP_FLANGE_LATERAL,
                                            Bits::FLANGE1_LATERAL | Bits::FLANGE1_WARPING_PART | Bits::TORSION_PART,
                                            Bits::FLANGE1_LATERAL | Bits::FLANGE2_LATERAL | Bits::MINOR_ROTATION,
                                            Bits::COMP_FLANGE_LATERAL | Bits::TENS_FLANGE_LATERAL};
    return dice.Of(list);
}

unsigned AlongBits(Dice& dice)
{
    static const std::vector<unsigned> list{Bits::FLANGE1_LATERAL,
                                            Bits::FLANGE1_LATERAL,
                                            Bits::FLANGE2_LATERAL,
                                            Bits::FLANGE1_LATERAL | Bits::FLANGE2_LATERAL,
                                            Bits::COMP_FLANGE_LATERAL,
                                            Bits::TENS_FLANGE_LATERAL,
                                            Bits::TORSION | Bits::FLANGE1_LATERAL,
                                            Bits::TORSION,
                                            Bits::MINOR_SHEAR,
                                            Bits::FLANGE1_LATERAL | Bits::TORSION_PART,
                                            Bits::COMP_FLANGE_LATERAL | Bits::TENS_FLANGE_LATERAL};
    return dice.Of(list);
}

struct Layout {
    std::vector<double> x;
    std::vector<std::size_t> supports;
    bool leftTip = false, rightTip = false;
};

Layout MakeLayout(const Section& s, Dice& dice)
{
    Layout l;
    const std::size_t subs = static_cast<std::size_t>(1 + dice.Below(6));
    const double L =
        std::clamp(std::round(100.0 * dice.Between(4.0, 40.0) * std::max(s.D, 0.7 * s.B)) / 100.0, 0.4, 40.0);
    std::vector<double> inner;
    while (inner.size() + 1 < subs) {
        const double x = std::round(1000.0 * L * dice.Between(0.06, 0.94)) / 1000.0;
        bool apart = true;
        for (const double other : inner)
            apart = apart && std::fabs(other - x) > 0.04 * L;
        if (apart) inner.push_back(x);
    }
    std::sort(inner.begin(), inner.end());
    l.x.push_back(0.0);
    l.x.insert(l.x.end(), inner.begin(), inner.end());
    l.x.push_back(L);
    const std::size_t last = l.x.size() - 1;
    if (dice.Chance(0.1)) { // a cantilever
        l.leftTip = dice.Chance(0.5), l.rightTip = !l.leftTip;
        l.supports = {l.leftTip ? last : 0};
        return l;
    }
    if (last >= 2) l.leftTip = dice.Chance(0.12);
    if (last >= 3 || (last == 2 && !l.leftTip)) l.rightTip = dice.Chance(0.12);
    const std::size_t first = l.leftTip ? 1 : 0, end = l.rightTip ? last - 1 : last;
    l.supports.push_back(first);
    for (std::size_t i = first + 1; i < end; ++i)
        if (dice.Chance(0.25)) l.supports.push_back(i);
    if (end > first) l.supports.push_back(end);
    return l;
}

void SetRestraints(const Layout& l, Member& m, Dice& dice)
{
    const std::size_t last = l.x.size() - 1;
    for (std::size_t i = 0; i <= last; ++i) {
        Point p;
        p.x = l.x[i];
        const bool support = std::find(l.supports.begin(), l.supports.end(), i) != l.supports.end();
        p.bits = support ? SupportBits(dice) : InnerBits(dice);
        if (l.supports.size() == 1 && support)
            p.bits = dice.Chance(0.7) ? static_cast<unsigned>(Bits::ENCASTRE) : p.bits | Bits::MAJOR_ROTATION;
        m.points.push_back(p);
    }
    const bool decked = dice.Chance(0.2), some = dice.Chance(0.25);
    const unsigned deck = AlongBits(dice);
    for (SubSpan& s : m.subs)
        s.bits = decked ? deck : some && dice.Chance(0.4) ? AlongBits(dice) : 0u;
    if (!dice.Chance(0.2)) return;
    for (Point& p : m.points)
        if (dice.Chance(0.4)) p.height = dice.Chance(0.7) ? 0.25 : -0.125;
    for (SubSpan& s : m.subs)
        if (dice.Chance(0.2)) s.height = 0.25;
}

void SetActions(const Layout& l, const Properties& p, double py, Member& m, Dice& dice)
{
    const bool bent = dice.Chance(0.88), sideways = dice.Chance(0.35),
               axial = dice.Chance(0.55) || (!bent && !sideways);
    const double level = dice.Between(0.2, 1.1);
    double share[3] = {bent ? dice.Between(0.1, 1.0) : 0.0, sideways ? dice.Between(0.02, 0.7) : 0.0,
                       axial ? dice.Between(0.02, 1.0) : 0.0};
    const double all = share[0] + share[1] + share[2];
    for (double& s : share)
        s *= level / all;
    Curve x = Bend(l.x, l.supports, l.leftTip, l.rightTip, dice);
    std::vector<std::size_t> across{0};
    for (std::size_t i = 1; i + 1 < l.x.size(); ++i)
        if (dice.Chance(0.3)) across.push_back(i);
    across.push_back(l.x.size() - 1);
    Curve y = Bend(l.x, across, false, false, dice);
    const double mx = LargestMoment(x, l.x), my = LargestMoment(y, l.x);
    const double kx = mx > 0.0 ? share[0] * py * p.Zx / mx : 0.0, ky = my > 0.0 ? share[1] * py * p.Zy / my : 0.0;
    double F = share[2] * py * p.A * (dice.Chance(0.62) ? -1.0 : 1.0);
    const int pattern = dice.Below(4);
    for (std::size_t i = 0; i < m.subs.size(); ++i) {
        SubSpan& s = m.subs[i];
        if (pattern == 1) F *= dice.Between(0.7, 1.0);
        for (int e = 0; e < 2; ++e) {
            if (pattern == 2) F *= dice.Between(0.8, 1.0);
            s.F[e] = F;
            s.Fz[e] = kx * x.V[e][i], s.Myy[e] = kx * x.M[e][i];
            s.Fy[e] = -ky * y.V[e][i], s.Mzz[e] = ky * y.M[e][i];
        }
    }
}

/// Forces of one sub-span that do not balance, or hardly, in a few members.
void Disturb(Member& m, Dice& dice)
{
    const unsigned relative = Bits::COMP_FLANGE_LATERAL | Bits::TENS_FLANGE_LATERAL;
    if (!dice.Chance(0.07)) return;
    SubSpan& s = m.subs[static_cast<std::size_t>(dice.Below(static_cast<int>(m.subs.size())))];
    if ((s.bits & relative) != 0) return;
    const double k = dice.Chance(0.3) ? 1.0005 : dice.Between(1.1, 1.8);
    if (dice.Chance(0.6))
        s.Fz[1] *= k;
    else
        s.Fy[0] *= k;
}

/// As a file of nine digits has it.
double Rounded(double v)
{
    char text[40];
    std::snprintf(text, sizeof text, "%.9g", v);
    return std::strtod(text, nullptr);
}

void RoundAll(Member& m)
{
    for (SubSpan& s : m.subs)
        for (int e = 0; e < 2; ++e)
            for (double* v : {&s.F[e], &s.Fy[e], &s.Fz[e], &s.Mxx[e], &s.Myy[e], &s.Mzz[e]})
                *v = Rounded(*v);
}

std::string FileText(const Member& m, const Described& d, std::uint64_t seed)
{
    std::ostringstream t;
    t.precision(9);
    t << "TITLE,random member " << seed << (m.exact ? " design option 2" : " design option 1")
      << "\nHEADINGS,section,type\nSECTION," << d.text << ',' << d.type << '\n';
    if (m.grade.name == "User")
        t << "GRADE,User_defined," << m.grade.Ys << ',' << m.grade.Us << ',' << m.grade.E << ',' << m.grade.factor
          << '\n';
    else
        t << "GRADE," << m.grade.name << '\n';
    t << "NET_TO_GROSS," << m.netGross << "\nALLOWABLE_PLASTIC/ELASTIC_RATIO," << m.plasElas
      << "\nSHEAR_LAG_FACTOR,0.7\nHEADINGS,YES/NO,major,minor,LT\nEFFECTIVE_LENGTH_OVERRIDES,";
    if (m.given)
        t << "YES," << m.givenMajor << ',' << m.givenMinor << ',' << m.givenLT << '\n';
    else
        t << "NO\n";
    if (m.factor) t << "EQUIVALENT_UNIFORM_MOMENT_FACTOR," << *m.factor << '\n';
    t << "HEADINGS,points\n";
    for (std::size_t i = 0; i < m.points.size(); ++i)
        t << "MEMBERPOINT," << i + 1 << ',' << m.points[i].x << ',' << m.points[i].bits << ',' << m.points[i].height
          << '\n';
    t << "HEADINGS,sub-spans\n";
    for (std::size_t i = 0; i < m.subs.size(); ++i) {
        const SubSpan& s = m.subs[i];
        t << "SUBSPAN," << i + 1;
        for (int e = 0; e < 2; ++e)
            t << ',' << s.F[e] << ',' << s.Fy[e] << ',' << s.Fz[e];
        for (int e = 0; e < 2; ++e)
            t << ',' << s.Mxx[e] << ',' << s.Myy[e] << ',' << s.Mzz[e];
        t << ',' << s.bits << ',' << s.height << '\n';
    }
    t << "END\n";
    return t.str();
}

} // namespace

const char* FamilyName(Family family)
{
    static const char* const names[] = {"rolled I", "plate I", "unequal I", "channel",
                                        "tee",      "angle",   "hollow",    "tube"};
    return names[static_cast<int>(family)];
}

RandomMember MakeRandomMember(Family family, std::uint64_t seed)
{
    Dice dice(seed * 8 + static_cast<std::uint64_t>(family));
    RandomMember made;
    Member& m = made.member;
    const Described d = MakeSection(family, dice);
    m.section = d.section;
    do {
        m.grade = Grade{};
        m.grade.name = dice.Of<std::string>({"S275", "S275", "S355", "S355", "S460", "User"});
        if (m.grade.name == "User") {
            m.grade.Ys = 1e6 * Whole(dice.Between(220, 480));
            m.grade.Us = dice.Chance(0.3) ? 0.0 : m.grade.Ys * (dice.Chance(0.5) ? 1.5 : 1.125);
            m.grade.E = dice.Chance(0.5) ? 205e9 : 210e9;
            m.grade.factor = dice.Chance(0.5) ? 1.0 : 1.1;
        }
    } while (!(SteelOf(m.grade, m.section).py > 0.0));
    const Properties p = PropertiesOf(m.section);
    const Layout layout = MakeLayout(m.section, dice);
    m.subs.resize(layout.x.size() - 1);
    SetRestraints(layout, m, dice);
    SetActions(layout, p, SteelOf(m.grade, m.section).py, m, dice);
    Disturb(m, dice);
    if (dice.Chance(0.25)) m.netGross = Rounded(std::round(100 * dice.Between(0.6, 1.0)) / 100);
    if (dice.Chance(0.4)) m.plasElas = 1.5;
    m.exact = dice.Chance(0.4);
    if (dice.Chance(0.1)) {
        const auto length = [&] {
            const double k = std::round(100.0 * dice.Between(0.3, 1.3)) / 100.0;
            return dice.Chance(0.06) ? 0.0 : dice.Chance(0.5) ? -k : Rounded(k * m.Length());
        };
        m.given = true;
        m.givenMajor = length(), m.givenMinor = length(), m.givenLT = length();
    }
    if (dice.Chance(0.05)) m.factor = std::round(100.0 * dice.Between(0.4, 1.0)) / 100.0;
    RoundAll(m);
    made.text = FileText(m, d, seed);
    return made;
}

} // namespace Second
