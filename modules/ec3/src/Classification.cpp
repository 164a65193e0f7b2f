// EN 1993-1-1 5.5, Table 5.2.
//
//   c, t     width and thickness of a plate         α    compressed part of c under plastic stresses
//   ε        (235 N/mm²/fy)^0.5                     ψ    stress at the less compressed edge over that at the other, elastic

#include "keltrix/ec3/Classification.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Keltrix::EC3 {

namespace {

constexpr double INF = std::numeric_limits<double>::infinity();

using Limits = std::array<double, 3>;

// Sheet 1, part subject to bending and compression. For α = 0.5 and ψ = -1 it is the row of bending, for α = ψ = 1 that of
// compression.
Limits InternalLimits(double e, double alpha, double psi)
{
    Limits l;
    l[0] = alpha > 0.5 ? 396.0 * e / (13.0 * alpha - 1.0) : alpha > 0.0 ? 36.0 * e / alpha : INF;
    l[1] = alpha > 0.5 ? 456.0 * e / (13.0 * alpha - 1.0) : alpha > 0.0 ? 41.5 * e / alpha : INF;
    l[2] = psi > -1.0 ? 42.0 * e / (0.67 + 0.33 * psi) : 62.0 * e * (1.0 - psi) * std::sqrt(-psi);
    return l;
}

// Sheet 2, part subject to compression.
Limits OutstandLimits(double e) { return {9.0 * e, 10.0 * e, 14.0 * e}; }

// Sheet 2, part subject to bending and compression, with the tip or the supported edge under the larger compression. A tip that is
// compressed alone has the row of compression at α = 1.
Limits BentOutstandLimits(double e, bool tip, double alpha, double psi)
{
    const double divisor = tip ? alpha : alpha * std::sqrt(alpha);
    const double k = tip ? BucklingFactorTip(psi) : BucklingFactorRoot(psi);
    return {alpha > 0.0 ? 9.0 * e / divisor : INF, alpha > 0.0 ? 10.0 * e / divisor : INF, 21.0 * e * std::sqrt(k)};
}

// How far a plate is compressed by bending: α and ψ, ψ at most 1.
struct Bent {
    double alpha = 0.0;
    double psi = 0.0;
    bool compressed = true;
};

Bent MakeBent(double alpha, double sigma1, double sigma2)
{
    Bent bent;
    bent.alpha = std::clamp(alpha, 0.0, 1.0);
    bent.compressed = bent.alpha > 0.0 || sigma1 > 0.0;
    bent.psi = sigma1 > 0.0 ? std::min(1.0, sigma2 / sigma1) : -INF;
    return bent;
}

// Walls along the web of a section that is symmetric about the axis of bending: α = 0.5(1 + NEd/(fy t c)) of all of them,
// ψ = 2 NEd/(A fy) - 1.
Bent SymmetricWeb(const Section& s, const Strength& m, const Plate& web, double NEd)
{
    const double alpha = 0.5 * (1.0 + NEd / (m.fy * web.count * web.t * web.c));
    return MakeBent(alpha, 1.0, 2.0 * NEd / (s.A * m.fy) - 1.0);
}

// Web between unequal flanges. Plastic: the areas in compression and in tension differ by NEd/fy. Elastic: fy at the compressed edge of
// the web, or at the outer fibre where the centroid is beyond that edge.
Bent UnequalWeb(const Section& s, const Strength& m, const Plate& web, double NEd, bool top)
{
    const double flanges = s.b2 * s.tf2 - s.b * s.tf; // tension less compression where the top is compressed
    const double alpha = 0.5 * (1.0 + (NEd / m.fy + (top ? flanges : -flanges)) / (web.t * web.c));
    const double cy = s.basis.cy;
    const double fibre = top ? s.h - cy : cy;
    const double edge = fibre - (top ? s.tf : s.tf2) - s.r; // from the centroid
    const double axial = NEd / s.A;
    const double gradient = std::max(0.0, m.fy - axial) / (edge > 0.0 ? edge : fibre);
    return MakeBent(alpha, axial + gradient * edge, axial + gradient * (edge - web.c));
}

// Stem of a tee, supported by its flange. fy at the outer fibre on the compressed side.
Bent Stem(const Section& s, const Strength& m, const Plate& stem, double NEd, bool top)
{
    const double area = stem.t * stem.c;
    const double compressed = 0.5 * (s.A + NEd / m.fy);
    const double cy = s.basis.cy;
    const double axial = NEd / s.A;
    const double gradient = std::max(0.0, m.fy - axial) / (top ? s.h - cy : cy); // towards the compressed side
    const double root = stem.c - cy;                                             // above the centroid
    if (top) return MakeBent((compressed - (s.A - area)) / area, axial + gradient * root, axial - gradient * cy);
    return MakeBent(compressed / area, axial + gradient * cy, axial - gradient * root);
}

// Puts every plate, in every way in which it is compressed, against its row.
class Judge {
public:
    Judge(const Section& s, const Strength& m, const ClassActions& a, Classification& c) :
        m_s(s), m_m(m), m_a(a), m_c(c)
    {}

    void Run()
    {
        switch (m_s.shape) {
        case Shape::CHS:
            if (Anything()) Add(*m_s.Find(PlatePlace::Tube), L"tube", TubeLimits());
            break;
        case Shape::Angle:
            if (Anything()) Legs();
            break;
        case Shape::RHS:
            Box();
            break;
        default:
            Web();
            Flanges();
            break;
        }
    }

private:
    bool Anything() const { return m_a.NEd > 0.0 || m_a.BendsMajor() || m_a.BendsMinor(); }
    Limits TubeLimits() const
    {
        const double e2 = m_m.epsilon * m_m.epsilon;
        return {50.0 * e2, 70.0 * e2, 90.0 * e2};
    }
    Limits Compressed(const Plate& plate) const
    {
        return plate.kind == PlateKind::Outstand ? OutstandLimits(m_m.epsilon) : InternalLimits(m_m.epsilon, 1.0, 1.0);
    }

    // By the last limit that is exceeded: with much tension that of class 3 can be the smallest.
    void Add(const Plate& plate, const wchar_t* row, const Limits& limit, double alpha = 1.0, double psi = 1.0)
    {
        PlateClass& e = m_c.plates[static_cast<std::size_t>(m_c.count++)];
        e.plate = plate;
        e.row = row;
        e.ratio = plate.Ratio();
        e.limit = limit;
        e.alpha = alpha;
        e.psi = psi;
        e.cls = 1;
        for (int i = 0; i < 3; ++i)
            if (!(e.ratio <= limit[static_cast<std::size_t>(i)] * (1.0 + 1e-9))) e.cls = i + 2;
        m_c.cls = std::max(m_c.cls, e.cls);
    }
    void AddCompressed(const Plate& plate)
    {
        Add(plate, plate.kind == PlateKind::Outstand ? L"outstand, compression" : L"internal, compression",
            Compressed(plate));
    }
    void AddBent(const Plate& plate, const Bent& bent)
    {
        if (bent.compressed)
            Add(plate, L"internal, bending and compression", InternalLimits(m_m.epsilon, bent.alpha, bent.psi),
                bent.alpha, bent.psi);
    }

    // Sheet 3. The table has no class 1 or 2 for angles.
    void Legs()
    {
        const Plate& vertical = *m_s.Find(PlatePlace::VerticalLeg);
        const Plate& horizontal = *m_s.Find(PlatePlace::HorizontalLeg);
        Add(vertical.c >= horizontal.c ? vertical : horizontal, L"angle", {0.0, 0.0, 15.0 * m_m.epsilon});
        Plate both = vertical;
        both.name = L"both legs";
        both.ratioName = L"(b + h)/(2t)";
        both.c = 0.5 * (vertical.c + horizontal.c);
        Add(both, L"angle", {0.0, 0.0, 11.5 * m_m.epsilon});
    }

    // Each wall is flange for one axis and web for the other.
    void Box()
    {
        const Plate& web = *m_s.Find(PlatePlace::Web);
        Plate flange = *m_s.Find(PlatePlace::Flange1);
        const bool axial = m_a.NEd > 0.0 && !m_a.BendsMajor() && !m_a.BendsMinor();
        if (m_a.BendsMajor() || axial) AddCompressed(flange);
        if (m_a.BendsMinor() || axial) AddCompressed(web);
        if (m_a.BendsMajor()) AddBent(web, SymmetricWeb(m_s, m_m, web, m_a.NEd));
        if (!m_a.BendsMajor() && m_a.BendsMinor()) {
            flange.count = 2;
            AddBent(flange, SymmetricWeb(m_s, m_m, flange, m_a.NEd));
        }
    }

    void Flanges()
    {
        const bool always = m_a.NEd > 0.0 || m_a.BendsMinor();
        const Plate* first = m_s.Find(PlatePlace::Flange1);
        const Plate* second = m_s.Find(PlatePlace::Flange2);
        const bool equal = m_s.shape != Shape::UnequalI;
        if (always || m_a.compressesTop || (equal && second && m_a.compressesBottom)) AddCompressed(*first);
        if (!equal && (always || m_a.compressesBottom)) AddCompressed(*second);
    }

    // Uniform compression where My does not act at all, of a stem always, because a trace of My that pulls its tip would count as if it were
    // as large as the section can carry; the back of a channel under Mz too, because it is as far from the axis as
    // the web is thin.
    void Web()
    {
        const Plate& web = *m_s.Find(PlatePlace::Web);
        if (m_a.compressesTop) BentWeb(web, true);
        if (m_a.compressesBottom && (m_s.shape == Shape::UnequalI || m_s.shape == Shape::Tee || !m_a.compressesTop))
            BentWeb(web, false);
        const bool back = m_s.shape == Shape::Channel && m_a.compressesBack;
        const bool isUniform = !m_a.BendsMajor() || m_s.shape == Shape::Tee;
        if ((m_a.NEd > 0.0 && isUniform) || back) AddCompressed(web);
    }
    void BentWeb(const Plate& web, bool top)
    {
        if (m_s.shape == Shape::Tee) {
            const Bent bent = Stem(m_s, m_m, web, m_a.NEd, top);
            if (bent.compressed)
                Add(web, top ? L"outstand, bending, tip in tension" : L"outstand, bending, tip in compression",
                    BentOutstandLimits(m_m.epsilon, !top, bent.alpha, bent.psi), bent.alpha, bent.psi);
            return;
        }
        AddBent(web, m_s.shape == Shape::UnequalI ? UnequalWeb(m_s, m_m, web, m_a.NEd, top)
                                                  : SymmetricWeb(m_s, m_m, web, m_a.NEd));
    }

    const Section& m_s;
    const Strength& m_m;
    const ClassActions& m_a;
    Classification& m_c;
};

void TakeElastic(const Section& s, Classification& c)
{
    c.Wy = s.shape == Shape::Angle ? s.Welu : s.Wely;
    c.Wz = s.shape == Shape::Angle ? s.Welv : s.Welz;
    c.WyName = s.shape == Shape::Angle ? L"Wel,u" : L"Wel,y";
    c.WzName = s.shape == Shape::Angle ? L"Wel,v" : L"Wel,z";
}

void TakeEffective(Classification& c)
{
    c.A = c.effective.Aeff;
    c.Wy = c.effective.Weffy;
    c.Wz = c.effective.Weffz;
    c.WyName = L"Weff,y";
    c.WzName = L"Weff,z";
}

} // namespace

Classification Classify(const Section& s, const Strength& m, const ClassActions& a)
{
    Classification c;
    Judge(s, m, a, c).Run();
    c.A = s.A;
    TakeElastic(s, c);
    c.effective.Aeff = s.A;
    c.effective.Weffy = c.Wy;
    c.effective.Weffz = c.Wz;
    if (c.cls == 4) {
        c.effective = MakeEffective(s, m, a);
        TakeEffective(c);
    }
    // An angle that nothing compresses has elastic resistances too: 6.2.5 has no plastic modulus about its principal axes.
    if (c.IsPlastic() && s.shape != Shape::Angle) {
        c.Wy = s.Wply;
        c.Wz = s.Wplz;
        c.WyName = L"Wpl,y";
        c.WzName = L"Wpl,z";
    }
    return c;
}

} // namespace Keltrix::EC3
