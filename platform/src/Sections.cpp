#include <array>
#include <cmath>
#include <optional>

#include "Numbers.h"
#include "keltrix/platform/KxData.h"
#include "keltrix/platform/NumberText.h"

namespace Keltrix {

namespace {

constexpr double MM_PER_M = 1000.0;

// A parametric form: its word, the dimensions in the order of the text, and the radii that may follow them.
struct ParametricForm {
    std::wstring_view word;
    int shape;
    std::array<int, 7> dimensions; // numbers of CSecGeom::Prop, NONE after the last
    std::array<int, 2> radii;
};

constexpr int NONE = -1;
using Geom = CSecGeom;

constexpr ParametricForm FORMS[] = {
    {L"I",
     Geom::SHAPE_I,
     {Geom::DEPTH, Geom::WIDTH, Geom::WEB_THICKNESS, Geom::FLANGE_THICKNESS, NONE, NONE, NONE},
     {Geom::ROOT_RADIUS, NONE}},
    {L"GI",
     Geom::SHAPE_GENERAL_I,
     {Geom::DEPTH, Geom::WIDTH, Geom::BOTTOM_FLANGE_WIDTH, Geom::WEB_THICKNESS, Geom::FLANGE_THICKNESS,
      Geom::BOTTOM_FLANGE_THICKNESS, NONE},
     {Geom::ROOT_RADIUS, NONE}},
    {L"C",
     Geom::SHAPE_CHANNEL,
     {Geom::DEPTH, Geom::WIDTH, Geom::WEB_THICKNESS, Geom::FLANGE_THICKNESS, NONE, NONE, NONE},
     {Geom::ROOT_RADIUS, Geom::TOE_RADIUS}},
    {L"TEE",
     Geom::SHAPE_T,
     {Geom::DEPTH, Geom::WIDTH, Geom::WEB_THICKNESS, Geom::FLANGE_THICKNESS, NONE, NONE, NONE},
     {Geom::ROOT_RADIUS, Geom::TOE_RADIUS}},
    {L"ANGLE",
     Geom::SHAPE_ANGLE,
     {Geom::DEPTH, Geom::WIDTH, Geom::WEB_THICKNESS, NONE, NONE, NONE, NONE},
     {Geom::ROOT_RADIUS, Geom::TOE_RADIUS}},
    {L"BOX",
     Geom::SHAPE_RHS,
     {Geom::DEPTH, Geom::WIDTH, Geom::WEB_THICKNESS, Geom::FLANGE_THICKNESS, NONE, NONE, NONE},
     {NONE, NONE}},
    {L"TUBE", Geom::SHAPE_CHS, {Geom::DEPTH, Geom::WEB_THICKNESS, NONE, NONE, NONE, NONE, NONE}, {NONE, NONE}},
};

const ParametricForm* FormOfShape(int shape)
{
    for (const ParametricForm& form : FORMS) {
        if (form.shape == (shape & Geom::SHAPE_MASK)) return &form;
    }
    return nullptr;
}

// Takes a parametric description apart.
class ParametricReader {
public:
    explicit ParametricReader(std::wstring_view text) : m_rest(text) {}

    // The form and, in `values`, its dimensions and radii in m; null when the text is no parametric description.
    const ParametricForm* Read(std::array<double, 9>& values)
    {
        const ParametricForm* const form = ReadWord();
        if (!form) return nullptr;
        const std::size_t dimensions = Count(form->dimensions);
        const std::size_t radii = Count(form->radii);
        for (std::size_t i = 0; i < dimensions; ++i) {
            if ((i > 0 && !ReadSeparator()) || !ReadMillimetres(values[i]) || !(values[i] > 0.0)) return nullptr;
        }
        SkipBlanks();
        if (m_rest.empty()) return form;
        for (std::size_t i = dimensions; i < dimensions + radii; ++i) {
            if (!ReadSeparator() || !ReadMillimetres(values[i]) || !(values[i] >= 0.0)) return nullptr;
        }
        SkipBlanks();
        return m_rest.empty() ? form : nullptr;
    }

    template <std::size_t N>
    static std::size_t Count(const std::array<int, N>& props)
    {
        std::size_t count = 0;
        while (count < N && props[count] != NONE)
            ++count;
        return count;
    }

private:
    void SkipBlanks()
    {
        while (!m_rest.empty() && (m_rest.front() == L' ' || m_rest.front() == L'\t'))
            m_rest.remove_prefix(1);
    }

    const ParametricForm* ReadWord()
    {
        SkipBlanks();
        std::size_t length = 0;
        const auto isLetter = [](wchar_t c) { return (c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z'); };
        while (length < m_rest.size() && isLetter(m_rest[length]))
            ++length;
        const CString word(m_rest.substr(0, length));
        m_rest.remove_prefix(length);
        SkipBlanks();
        for (const ParametricForm& form : FORMS) {
            if (word.CompareNoCase(form.word) == 0) return &form;
        }
        return nullptr;
    }

    bool ReadSeparator()
    {
        SkipBlanks();
        static constexpr std::wstring_view SEPARATORS = L"xX*\u00D7";
        if (m_rest.empty() || SEPARATORS.find(m_rest[0]) == std::wstring_view::npos) return false;
        m_rest.remove_prefix(1);
        SkipBlanks();
        return true;
    }

    bool ReadMillimetres(double& metres)
    {
        std::size_t used = 0;
        metres = ReadReal<double>(m_rest, used) / MM_PER_M;
        m_rest.remove_prefix(used);
        return used > 0 && std::isfinite(metres);
    }

    std::wstring_view m_rest;
};

// The number of mm that is read back as the same number of metres and is written with the fewest digits. Not every
// number of metres is the quotient of a number of mm; one that is not keeps the nearest.
double ShortestMillimetres(double metres)
{
    std::array<char, 32> buffer;
    const double product = metres * MM_PER_M;
    for (int digits = 1; digits <= 17; ++digits) {
        double mm = 0.0;
        const auto end =
            WriteNumber(buffer.data(), buffer.data() + buffer.size(), product, std::chars_format::general, digits).ptr;
        ReadNumber(buffer.data(), end, mm);
        if (mm / MM_PER_M == metres) return mm;
    }
    // The product is rounded, so that the dimension it comes from may be its neighbour.
    for (const double mm : {std::nextafter(product, 0.0), std::nextafter(product, 2.0 * product)}) {
        if (mm / MM_PER_M == metres) return mm;
    }
    return product;
}

std::wstring Millimetres(double metres)
{
    // Room for the plain decimals of every double.
    std::array<char, 400> buffer;
    const auto end =
        WriteNumber(buffer.data(), buffer.data() + buffer.size(), ShortestMillimetres(metres), std::chars_format::fixed)
            .ptr;
    return std::wstring(buffer.data(), end);
}

CString ParametricDescription(const CSecGeom& geom, const ParametricForm& form)
{
    CString text(form.word);
    const auto append = [&](wchar_t separator, int prop) {
        text += separator;
        text += std::wstring_view(Millimetres(geom.Dimension(0.0, static_cast<Geom::Prop>(prop))));
    };
    for (std::size_t i = 0; i < ParametricReader::Count(form.dimensions); ++i) {
        append(i == 0 ? L' ' : L'x', form.dimensions[i]);
    }
    const std::size_t radii = ParametricReader::Count(form.radii);
    bool anyRadius = false;
    for (std::size_t i = 0; i < radii; ++i) {
        anyRadius = anyRadius || geom.Dimension(0.0, static_cast<Geom::Prop>(form.radii[i])) != 0.0;
    }
    for (std::size_t i = 0; anyRadius && i < radii; ++i)
        append(L'x', form.radii[i]);
    return text;
}

// "(D 453.4 B 189.9 t 8.5 T 12.7 r 10.2 mm)": the dimensions that are not 0.
CString DimensionsInBrackets(const CSecGeom& geom)
{
    struct Label {
        const wchar_t* text;
        Geom::Prop prop;
    };
    static constexpr Label labels[] = {{L"D ", Geom::DEPTH},         {L"B ", Geom::WIDTH},
                                       {L"t ", Geom::WEB_THICKNESS}, {L"T ", Geom::FLANGE_THICKNESS},
                                       {L"r ", Geom::ROOT_RADIUS},   {L"rt ", Geom::TOE_RADIUS}};
    CString text = L"(";
    for (const auto& [label, prop] : labels) {
        const double dimension = geom.Dimension(0.0, prop);
        if (dimension == 0.0) continue;
        text += label;
        text += std::wstring_view(Millimetres(dimension));
        text += L' ';
    }
    text += L"mm)";
    return text;
}

} // namespace

CString SecTypeString(SecType type)
{
    switch (type) {
    case SEC_ROLLED:
        return L"ROLLED";
    case SEC_WELDED:
        return L"WELDED";
    case SEC_FORMED:
        return L"FORMED";
    default:
        return L"UNDEF";
    }
}

CSecGeom::~CSecGeom() = default;

void CSecGeom::SetShape(int shape)
{
    m_iShape = shape;
    m_strDesignation.Empty();
}

double CSecGeom::Dimension(double, Prop prop) const
{
    const auto place = static_cast<std::size_t>(prop);
    return place < m_dimensions.size() ? m_dimensions[place] : 0.0;
}

void CSecGeom::SetDimension(Prop prop, double metres)
{
    const auto place = static_cast<std::size_t>(prop);
    if (place < m_dimensions.size()) m_dimensions[place] = metres;
    m_strDesignation.Empty();
}

CString CSecGeom::Description(bool brief) const
{
    if (!m_strDesignation.IsEmpty()) {
        return brief ? m_strDesignation : m_strDesignation + L" " + DimensionsInBrackets(*this);
    }
    const ParametricForm* const form = FormOfShape(m_iShape);
    return form ? ParametricDescription(*this, *form) : CString();
}

void CSecGeom::SetSecGeom(const CSecGeom& other) { *this = other; }

CSecComp::~CSecComp() = default;

CSecDB::CSecDB(const CString& name, const CSectDB* database) : m_strName(name), m_pDatabase(database) {}

CSecDB::~CSecDB() = default;

bool CSecDB::SetUpFromDesc(const CString& description)
{
    SetSecGeom(CSecGeom());
    m_eCatalogueType = SEC_UNDEF;

    if (const CSectDB::Entry* const entry = m_pDatabase ? m_pDatabase->Find(description) : nullptr) {
        SetShape(entry->shape);
        SetDimension(DEPTH, entry->depth);
        SetDimension(WIDTH, entry->width);
        SetDimension(WEB_THICKNESS, entry->webThickness);
        SetDimension(FLANGE_THICKNESS, entry->flangeThickness);
        SetDimension(ROOT_RADIUS, entry->rootRadius);
        SetDimension(TOE_RADIUS, entry->toeRadius);
        SetDesignation(entry->designation);
        m_eCatalogueType = static_cast<SecType>(entry->secType);
        m_strUserDesc = entry->designation;
        return true;
    }

    std::array<double, 9> values{};
    const ParametricForm* const form = ParametricReader(description).Read(values);
    if (!form) {
        m_strUserDesc = description;
        return false;
    }
    SetShape(form->shape);
    const std::size_t dimensions = ParametricReader::Count(form->dimensions);
    for (std::size_t i = 0; i < dimensions; ++i)
        SetDimension(static_cast<Prop>(form->dimensions[i]), values[i]);
    for (std::size_t i = 0; i < ParametricReader::Count(form->radii); ++i) {
        SetDimension(static_cast<Prop>(form->radii[i]), values[dimensions + i]);
    }
    if (form->shape == SHAPE_ANGLE) SetDimension(FLANGE_THICKNESS, Dimension(0.0, WEB_THICKNESS));
    m_strUserDesc = Description(true);
    return true;
}

CString CSecDB::UserDesc() const { return m_strUserDesc; }

CSection::CSection(const CString& description) : BaseEntity(description), m_components(1)
{
    if (description.IsEmpty()) return;
    CSecDB geometry(description, CSectDB::GetDatabase());
    geometry.SetUpFromDesc(description);
    m_components[0].SetSecGeom(geometry);
    m_components[0].SetType(geometry.CatalogueType());
}

void CSection::SetComponent(int i, const CSecComp& component)
{
    const auto place = static_cast<std::size_t>(i);
    // Copied first: the component may be one of this section's own.
    const CSecComp copy = component;
    if (place >= m_components.size()) m_components.resize(place + 1);
    m_components[place] = copy;
}

} // namespace Keltrix
