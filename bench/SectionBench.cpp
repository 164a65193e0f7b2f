// Every property of every shape, asked through the virtual operations that a code module uses. Floor: SectionFloor.h.

#include "SectionFloor.h"

#include "Bench.h"

#include <array>
#include <memory>
#include <stdexcept>
#include <string>

#include "support/ConcreteSections.h"

namespace Keltrix::Bench {

namespace {

using namespace Keltrix::Steel;

/// One property: the library's operation and the plain formula.
template <auto VirtualOperation, auto PlainFormula>
struct Property {
    template <class Shape>
    static double Ask(const Shape& shape)
    {
        return (shape.*VirtualOperation)();
    }
    template <class Plain>
    static double Floor(const Plain& plain)
    {
        return (plain.*PlainFormula)();
    }
};

template <class Shape, class Plain, class... Properties>
void RegisterShape(const std::string& shapeName, const wchar_t* description,
                   const std::array<const char*, sizeof...(Properties)>& names, Properties...)
{
    const CSection section(description);
    const auto shape = std::make_shared<Shape>();
    auto plain = Plain();
    if (!shape->SetKeltrixSec(section, nullptr) || !plain.SetKeltrixSec(section, nullptr) || !(shape->Area() > 0.0))
        throw std::logic_error("no section for " + shapeName);

    // Before every formula the dimensions count as changed, or the compiler would share work between them.
    const auto floorOf = [](auto property, Plain& p) {
        benchmark::DoNotOptimize(p);
        const double value = decltype(property)::Floor(p);
        benchmark::DoNotOptimize(value);
        return value;
    };
    std::size_t place = 0;
    const auto registerOne = [&](auto property) {
        const std::string name = shapeName + " " + names[place++];
        if (decltype(property)::Ask(*shape) != decltype(property)::Floor(plain))
            throw std::logic_error("floor and library disagree: " + name);
        MeasureWithFloor(
            name, [shape, property] { return property.Ask(*shape); },
            [plain, property, floorOf]() mutable { return floorOf(property, plain); });
    };
    (registerOne(Properties()), ...);
    MeasureWithFloor(
        shapeName + ", all properties",
        [shape] {
            double sum = 0.0;
            ((sum += Properties::Ask(*shape)), ...);
            return sum;
        },
        [plain, floorOf]() mutable {
            double sum = 0.0;
            ((sum += floorOf(Properties(), plain)), ...);
            return sum;
        },
        1.5);
}

} // namespace

#define PROPERTY(OPERATION) (Property<&Shape::OPERATION, &Plain::OPERATION>())
#define COMMON_NAMES "Area", "Ybar", "Xbar", "Ixx", "Iyy", "Ixy", "Sxx", "Syy", "Zxx", "Zyy", "J"
#define COMMON_PROPERTIES                                                                                              \
    PROPERTY(Area), PROPERTY(Ybar), PROPERTY(Xbar), PROPERTY(Ixx), PROPERTY(Iyy), PROPERTY(Ixy), PROPERTY(Sxx),        \
        PROPERTY(Syy), PROPERTY(Zxx), PROPERTY(Zyy), PROPERTY(J)

void RegisterSections()
{
    {
        using Shape = Steel::Test::ISection;
        using Plain = PlainI;
        RegisterShape<Shape, Plain>("I section", L"UB 457x191x67", {COMMON_NAMES, "Gamma", "YbarPlastic"},
                                    COMMON_PROPERTIES, PROPERTY(Gamma), PROPERTY(YbarPlastic));
    }
    {
        using Shape = Steel::Test::ChannelSection;
        using Plain = PlainPFC;
        RegisterShape<Shape, Plain>("channel", L"PFC 200x90x30", {COMMON_NAMES, "YbarPlastic", "XbarPlastic", "Iw"},
                                    COMMON_PROPERTIES, PROPERTY(YbarPlastic), PROPERTY(XbarPlastic), PROPERTY(Iw));
    }
    {
        using Shape = Steel::Test::TSection;
        using Plain = PlainT;
        RegisterShape<Shape, Plain>("T section", L"T 229x152x34", {COMMON_NAMES, "Iw", "MonoSymBeta", "YbarPlastic"},
                                    COMMON_PROPERTIES, PROPERTY(Iw), PROPERTY(MonoSymBeta), PROPERTY(YbarPlastic));
    }
    {
        using Shape = Steel::Test::AngleSection;
        using Plain = PlainAngle;
        RegisterShape<Shape, Plain>("angle", L"L 150x75x10",
                                    {COMMON_NAMES, "Iuu", "Ivv", "Alpha", "Zuu", "Zvv", "Suu", "Svv", "YbarPlastic"},
                                    COMMON_PROPERTIES, PROPERTY(Iuu), PROPERTY(Ivv), PROPERTY(Alpha), PROPERTY(Zuu),
                                    PROPERTY(Zvv), PROPERTY(Suu), PROPERTY(Svv), PROPERTY(YbarPlastic));
    }
    {
        using Shape = Steel::Test::RhsSection;
        using Plain = PlainRHS;
        RegisterShape<Shape, Plain>("rectangular hollow section", L"RHS 200x100x6.3", {COMMON_NAMES},
                                    COMMON_PROPERTIES);
    }
    {
        using Shape = Steel::Test::ChsSection;
        using Plain = PlainCHS;
        RegisterShape<Shape, Plain>("circular hollow section", L"CHS 168.3x5", {COMMON_NAMES}, COMMON_PROPERTIES);
    }
}

#undef PROPERTY
#undef COMMON_NAMES
#undef COMMON_PROPERTIES

} // namespace Keltrix::Bench
