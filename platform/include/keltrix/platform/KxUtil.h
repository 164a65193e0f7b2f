#pragma once

#include <iosfwd>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "keltrix/platform/CString.h"
#include "keltrix/platform/Export.h"

namespace Keltrix {

class CSecGeom;

/// A user's units: for each quantity a label and the factor from SI to the user's unit.
/// Default: length m, small length m, force kN, moment kNm, stress N/mm².
class KELTRIX_PLATFORM_API CUnit {
public:
    /// How a quantity is shown: by what its SI value is multiplied, and the unit behind it.
    struct Entry {
        CString label;
        double factor = 1.0;
        friend bool operator==(const Entry&, const Entry&) = default;
    };

    CUnit();

    void SetLength(const CString& label, double factor) { m_length = {label, factor}; }
    void SetLengthSmall(const CString& label, double factor) { m_lengthSmall = {label, factor}; }
    void SetForce(const CString& label, double factor) { m_force = {label, factor}; }
    void SetMoment(const CString& label, double factor) { m_moment = {label, factor}; }
    void SetStress(const CString& label, double factor) { m_stress = {label, factor}; }

    const Entry& Length() const { return m_length; }
    const Entry& LengthSmall() const { return m_lengthSmall; }
    const Entry& Force() const { return m_force; }
    const Entry& Moment() const { return m_moment; }
    const Entry& Stress() const { return m_stress; }

    friend bool operator==(const CUnit&, const CUnit&) = default;

private:
    Entry m_length;
    Entry m_lengthSmall;
    Entry m_force;
    Entry m_moment;
    Entry m_stress;
};

/// The number formatter of every report. Arguments are SI (m, N, N·m, Pa); each text is in the user's unit with a
/// blank and the unit after the number, except LengthSmall, NoDim, Util and Int, which give the bare number.
/// Zero of either sign is "0", infinities are "inf" and "-inf", not-a-number is "nan". Independent of the locale.
class KELTRIX_PLATFORM_API CDesFormat {
public:
    CDesFormat() = default;
    explicit CDesFormat(const CUnit& unit) : m_unit(unit) {}

    /// A length along the member, up to six significant figures: "6.25 m".
    CString Length(double metres) const;
    /// A small length (a plate thickness, a load height), up to six significant figures and without its unit, because
    /// the texts around it bring their own.
    CString LengthSmall(double metres) const;
    /// A force, up to five significant figures: "123.45 kN".
    CString Force(double newtons) const;
    /// A moment, up to five significant figures: "86.4 kNm".
    CString Moment(double newtonMetres) const;
    /// A stress, up to five significant figures: "275 N/mm²".
    CString Stress(double pascals) const;
    /// A ratio or factor, up to four significant figures.
    CString NoDim(double value) const;
    /// A utilisation with three decimals. More decimals are given where three would hide on which side of 1.0 it lies.
    CString Util(double value) const;
    /// A whole number.
    CString Int(int value) const;

    const CUnit& Unit() const { return m_unit; }

    friend bool operator==(const CDesFormat&, const CDesFormat&) = default;

private:
    CUnit m_unit;
};

// Scanners of comma-separated lines. A field ends at the next comma or at the end of the line; taking a field removes
// it and its comma from the front of the line, so that after the last field nothing is left. Fields are trimmed of
// blanks and tabs. Numbers are read independent of the locale: the longest valid prefix counts ("2.5m" is 2.5), a
// missing or malformed number is 0, a whole number out of range is clamped, "INF" and "NAN" in any case are read as
// written.

/// The next line of a text, without its "\n" or "\r\n". GetLine(&text) starts, GetLine(nullptr) goes on after the line
/// given before; past the end, and before any start, lines are empty. The place is kept per thread, and the text must
/// stay alive and unchanged while it is read.
KELTRIX_PLATFORM_API CString GetLine(const CString* text);
/// As GetLine, sharing its place, without copying: the view points into the text.
KELTRIX_PLATFORM_API std::wstring_view GetLineView(const CString* text);
/// Whether the place of GetLine has reached the end of the text (true before any start).
KELTRIX_PLATFORM_API bool AtEndOfLines();

/// Takes the next field as text.
KELTRIX_PLATFORM_API CString GetSubString(CString& line);
KELTRIX_PLATFORM_API std::wstring_view GetSubString(std::wstring_view& line);
/// Takes the next field as a number.
KELTRIX_PLATFORM_API double GetValueDouble(CString& line);
KELTRIX_PLATFORM_API double GetValueDouble(std::wstring_view& line);
/// Takes the next field as a whole number.
KELTRIX_PLATFORM_API int GetValueInt(CString& line);
KELTRIX_PLATFORM_API int GetValueInt(std::wstring_view& line);
/// Takes the next field as a single-precision number.
KELTRIX_PLATFORM_API float GetValueFloat(CString& line);
KELTRIX_PLATFORM_API float GetValueFloat(std::wstring_view& line);
/// A text that is as a whole a whole number (blanks and tabs at the ends allowed, out of range is clamped): true and
/// the number. Otherwise false, and `value` is left alone.
KELTRIX_PLATFORM_API bool StringTo(std::wstring_view text, int& value);

/// Something with a name.
class KELTRIX_PLATFORM_API BaseEntity {
public:
    BaseEntity() = default;
    explicit BaseEntity(const CString& name) : m_strName(name) {}

    const CString& GetName() const { return m_strName; }
    void SetName(const CString& name) { m_strName = name; }

private:
    CString m_strName;
};

/// Root of what can be copied through a base pointer.
class KELTRIX_PLATFORM_API CCloneable {
public:
    /// A new copy of the most derived object, owned by the caller: put it into a std::unique_ptr at once.
    virtual CCloneable* Clone() const = 0;
    // Comes after Clone: derived classes count their virtual operations on from here.
    virtual ~CCloneable();

protected:
    CCloneable() = default;
    CCloneable(const CCloneable&) = default;
    CCloneable& operator=(const CCloneable&) = default;
};

/// Root of the host's designs: a category and a design option out of a number of them.
class KELTRIX_PLATFORM_API CDesign : public CCloneable {
public:
    ~CDesign() override;
    /// 0, unless a derived class has categories.
    virtual int Category();
    virtual void SetDesOpt(int option);
    virtual int DesOpt() const;
    /// 1, unless a derived class offers more options.
    virtual int NumDesOpt() const;

protected:
    CDesign() = default;
    CDesign(const CDesign&) = default;
    CDesign& operator=(const CDesign&) = default;

private:
    int m_iDesOpt = 0;
};

/// What a catalogue file got wrong: `line` and `column` (the number of the field) count from 1, 0 where the fault has no
/// single place.
struct CatalogueError {
    int line = 0;
    int column = 0;
    CString message;
};

/// The section catalogue: standard sections by family and designation, with nominal dimensions.
/// The shared catalogue holds the built-in families; a host may add its own sections to it. Looking up is safe from
/// several threads as long as none of them adds.
class KELTRIX_PLATFORM_API CSectDB {
public:
    /// One catalogue row. Dimensions are in m; those that the shape does not have are 0.
    struct Entry {
        CString family;      ///< "UB", "RHS", "CFCHS", ...
        CString designation; ///< as it stands in a section description: "UB 457x191x67"
        int shape = 0;       ///< shape code: 1 I, 3 channel, 4 T, 5 angle, 7 circular hollow, 9 rectangular hollow
        int secType = 0;     ///< 1 rolled (hot finished), 3 cold formed
        double depth = 0.0;
        double width = 0.0;
        double webThickness = 0.0;
        double flangeThickness = 0.0;
        double rootRadius = 0.0;
        double toeRadius = 0.0;
        double massPerMetre = 0.0; ///< published mass per metre, kg/m
    };

    CSectDB();
    CSectDB(const CSectDB&) = delete;
    CSectDB& operator=(const CSectDB&) = delete;
    ~CSectDB();

    /// The process-wide catalogue, holding the built-in families from its first use.
    static CSectDB* GetDatabase();

    /// The row of a designation, or null. Letter case, blanks and the multiplication sign ("x", "*") are forgiven; so are trailing
    /// zeros (CHS 168.3x5.0), the family after the sizes or between them (457x191x67 UB, HE 200 B), one leg of two equal ones (SHS
    /// 100x5), and the families UKB, UKC, UKBP, UKPFC, RSC, UKA, RSA, EA, UA, UKT, HFSHS, HFRHS, HFCHS where the catalogue has no
    /// family of that name. Null where such a spelling fits several rows.
    const Entry* Find(std::wstring_view designation) const;
    /// All rows, in catalogue order (families in the order they were added, rows as in their file).
    const std::vector<Entry>& Entries() const;
    /// Up to `count` designations that are nearest to the text in meaning, nearest first: those of its family whose sizes
    /// differ least come first.
    std::vector<CString> Suggest(std::wstring_view text, std::size_t count) const;

    /// Adds the rows of a catalogue CSV text. On any error nothing is added and the errors say where and why.
    std::vector<CatalogueError> AddCsv(std::string_view csv);

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace Keltrix
