#pragma once

#include <vector>

#include "keltrix/platform/CString.h"
#include "keltrix/platform/KxUtil.h"
#include "keltrix/steel/Export.h"

namespace Keltrix::Steel {

/// The record that every check of a member writes into: utilisations of the local checks at each position,
/// utilisations of the member buckling checks, result flags, load flags, and the text that explains the checks.
///
/// A utilisation is action effect over resistance; 1.0 is the limit. Setters keep the largest value they were given,
/// so checks may be repeated over positions and load cases; a not-a-number utilisation counts as infinite. Local
/// setters and text go to the current sub-span position. Positions are not checked: the caller keeps them inside the
/// arrays.
class KELTRIX_STEEL_API CMemberResult {
public:
    // Result flags.
    KELTRIX_CONSTANT static constexpr int NOTIFY = 0x1;
    KELTRIX_CONSTANT static constexpr int WARNING = 0x2;
    KELTRIX_CONSTANT static constexpr int FAIL = 0x4;
    KELTRIX_CONSTANT static constexpr int NOT_CHECKED = 0x8;
    KELTRIX_CONSTANT static constexpr int FAIL_LOCAL = 0x10;
    KELTRIX_CONSTANT static constexpr int FAIL_BUCKLE = 0x20;
    KELTRIX_CONSTANT static constexpr int FAIL_BUCKLE_LAT_TORS = 0x100;
    KELTRIX_CONSTANT static constexpr int FAIL_BUCKLE_AXIAL_MAJOR = 0x200;
    KELTRIX_CONSTANT static constexpr int FAIL_BUCKLE_AXIAL_MINOR = 0x400;
    KELTRIX_CONSTANT static constexpr int FAIL_LOCAL_AXIAL = 0x1000;
    KELTRIX_CONSTANT static constexpr int FAIL_LOCAL_BENDING_MAJOR = 0x2000;
    KELTRIX_CONSTANT static constexpr int FAIL_LOCAL_BENDING_MINOR = 0x4000;
    KELTRIX_CONSTANT static constexpr int FAIL_LOCAL_SHEAR_MAJOR = 0x8000;
    KELTRIX_CONSTANT static constexpr int FAIL_LOCAL_SHEAR_MINOR = 0x10000;
    KELTRIX_CONSTANT static constexpr int FAIL_LOCAL_TORSION = 0x20000;
    KELTRIX_CONSTANT static constexpr int INFO_LOCAL_SLENDER = 0x100000;
    KELTRIX_CONSTANT static constexpr int INFO_LOCAL_SLENDER_WEB = 0x200000;
    KELTRIX_CONSTANT static constexpr int INFO_LOCAL_SLENDER_FLANGE = 0x400000;
    KELTRIX_CONSTANT static constexpr int INFO_MEMBER_SLENDER = 0x800000;
    KELTRIX_CONSTANT static constexpr int FAIL_BUCKLE_AXIAL_TORSION = 0x1000000;
    KELTRIX_CONSTANT static constexpr int FAIL_BUCKLE_AXIAL_FLEXURAL_TORSION = 0x2000000;

    // Load flags: which actions the member carries, set by the caller. The summary shows only the lines of these.
    KELTRIX_CONSTANT static constexpr int LOAD_AXIAL = 0x1;
    KELTRIX_CONSTANT static constexpr int LOAD_MAJOR = 0x2; ///< major-axis bending and shear
    KELTRIX_CONSTANT static constexpr int LOAD_MINOR = 0x4; ///< minor-axis bending and shear
    KELTRIX_CONSTANT static constexpr int LOAD_TORSION = 0x8;

    /// All load flags set, no result flags, text enabled, one position, every utilisation 0.
    CMemberResult();
    CMemberResult(const CMemberResult&) = default;
    CMemberResult(CMemberResult&&) = default;
    CMemberResult& operator=(const CMemberResult&) = default;
    CMemberResult& operator=(CMemberResult&&) = default;
    ~CMemberResult() = default;

    /// Back to a fresh record; whether text is enabled and the number format stay.
    void Clear();
    /// Empties every text and keeps the number of positions.
    void ClearStrings();

    /// This record merged with another (of another load case, say): result flags united, single values the larger,
    /// texts one after the other. Load flags are the other's, number format, indentation and current position this
    /// one's, and the buckling check counts as included. Of each local array the lexicographically greater one is
    /// taken whole: positions of two records are never mixed. Unless both records hold text, the merged one holds
    /// none but notes that say so, and its current position is 0.
    CMemberResult operator+(const CMemberResult& other) const;
    CMemberResult& operator+=(const CMemberResult& other);
    /// Exact equality of everything but text enabled, current position and include-buckling.
    bool operator==(const CMemberResult& other) const;
    bool operator!=(const CMemberResult& other) const { return !(*this == other); }

    int GetFlags() const { return m_iFlags; }
    void SetFlags(int flags) { m_iFlags = flags; }
    /// Whether all bits of the mask are set (so true for 0).
    bool TestFlags(int mask) const { return (m_iFlags & mask) == mask; }
    /// Adds flags with what they imply: a component failure implies its group's, that FAIL, that WARNING, that NOTIFY.
    void AddFlags(int bits);
    /// Clears exactly these bits; what they once implied stays.
    void RemoveFlags(int bits) { m_iFlags &= ~bits; }
    bool HasFailed() const { return (m_iFlags & FAIL) != 0; }

    int GetLoadFlags() const { return m_iLoadFlags; }
    void SetLoadFlags(int flags) { m_iLoadFlags = flags; }
    void AddLoadFlags(int bits) { m_iLoadFlags |= bits; }
    void RemoveLoadFlags(int bits) { m_iLoadFlags &= ~bits; }
    /// Whether any bit of the mask is set. Differs from TestFlags, which asks for all of them, on purpose.
    bool TestLoadFlags(int mask) const { return (m_iLoadFlags & mask) != 0; }

    double UtilOverAll() const { return m_dUtilOverAll; }
    double UtilLocalCombined(int i) const { return At(m_vUtilLocalCombined, i); }
    double UtilLocalAxial(int i) const { return At(m_vUtilLocalAxial, i); }
    double UtilLocalMomMajor(int i) const { return At(m_vUtilLocalMomMajor, i); }
    double UtilLocalMomMinor(int i) const { return At(m_vUtilLocalMomMinor, i); }
    double UtilLocalShearMajor(int i) const { return At(m_vUtilLocalShearMajor, i); }
    double UtilLocalShearMinor(int i) const { return At(m_vUtilLocalShearMinor, i); }
    double UtilLocalTorsion(int i) const { return At(m_vUtilLocalTorsion, i); }
    double UtilBucklingCombined() const { return m_dUtilBucklingCombined; }
    double UtilBucklingLT() const { return m_dUtilBucklingLT; }
    double UtilBucklingAxialMajor() const { return m_dUtilBucklingAxialMajor; }
    double UtilBucklingAxialMinor() const { return m_dUtilBucklingAxialMinor; }
    double UtilBucklingAxialTorsion() const { return m_dUtilBucklingAxialTorsion; }
    double UtilBucklingAxialFlexuralTorsion() const { return m_dUtilBucklingAxialFlexuralTorsion; }

    // Setters. A value that is not above the stored one changes nothing and raises no flag. A component raises its
    // combined value and the overall one. Limits of failure are not all alike, and are kept so: local values fail at
    // 1.0 and above, axial buckling components too, lateral-torsional and combined buckling only above 1.0.
    void SetUtilOverAll(double util);
    void SetUtilLocalCombined(double util);
    void SetUtilLocalAxial(double util);
    void SetUtilLocalMomMajor(double util);
    void SetUtilLocalMomMinor(double util);
    void SetUtilLocalShearMajor(double util);
    void SetUtilLocalShearMinor(double util);
    void SetUtilLocalTorsion(double util);
    void SetUtilBucklingCombined(double util);
    void SetUtilBucklingLT(double util);
    void SetUtilBucklingAxialMajor(double util);
    void SetUtilBucklingAxialMinor(double util);
    void SetUtilBucklingAxialTorsion(double util);
    void SetUtilBucklingAxialFlexuralTorsion(double util);

    // Largest value over all positions, 0.0 when none is above zero. `index`, where given, receives the first position
    // that has it, and is left alone when no value is above zero.
    double MaxUtilLocalCombined(int* index) const { return MaxOf(m_vUtilLocalCombined, index); }
    double MaxUtilLocalAxial(int* index) const { return MaxOf(m_vUtilLocalAxial, index); }
    double MaxUtilLocalMomMajor(int* index) const { return MaxOf(m_vUtilLocalMomMajor, index); }
    double MaxUtilLocalMomMinor(int* index) const { return MaxOf(m_vUtilLocalMomMinor, index); }
    double MaxUtilLocalShearMajor(int* index) const { return MaxOf(m_vUtilLocalShearMajor, index); }
    double MaxUtilLocalShearMinor(int* index) const { return MaxOf(m_vUtilLocalShearMinor, index); }
    double MaxUtilLocalTorsion(int* index) const { return MaxOf(m_vUtilLocalTorsion, index); }

    /// Plus infinity for not-a-number, any other value unchanged.
    static double InfinitiseNANs(double value);

    /// Sets the number of positions of the local arrays and the texts; what is kept stays, what is new is 0.0 and
    /// empty.
    void IniDynaArray(int n);
    void SetCurSubSpan(int i) { m_iCurSubSpan = i; }
    int CurSubSpan() const { return m_iCurSubSpan; }
    /// Whether the buckling checks belong to this result; the brief report asks.
    bool IncBuckChk() const { return m_bIncBuckChk; }
    void SetIncBuckChk(bool include) { m_bIncBuckChk = include; }
    void SetDesFormat(const CDesFormat& format) { m_format = format; }
    const CDesFormat& DesFormat() const { return m_format; }

    bool TextEnabled() const { return m_bTextEnabled; }
    /// False for null.
    static bool TextEnabled(const CMemberResult* result) { return result != nullptr && result->m_bTextEnabled; }
    /// Disabling empties every text and appends one entry that says that results are not stored.
    void EnableText(bool enable);
    /// Appends to the text of the current position, indented to the depth of the open CResultIndent scopes.
    /// Nothing when text is disabled.
    void AddOutputString(const CString& text);

    /// Every text: the member's, then the local checks under their headings. Entry 0 holds member-level text, the last
    /// one the buckling checks.
    CString GetVerbose() const;
    /// The member-level text, the critical positions (those with a local maximum above 1.0, or else that of the
    /// largest combined value) and, when included, the buckling checks. Entries are taken by position as they stand,
    /// so the last one may appear twice.
    CString GetBrief() const;
    /// Utilisations of the actions present, and the flags in words ("None" only where the flag word is zero).
    CString GetSummary() const;
    /// The two headings above local checks.
    CString TitleForCheckLocalOutput(bool alongMember) const;
    /// Puts `indent` tabs after every line break except a final one and, with `indentFirst`, in front of the text.
    static CString Tabify(const CString& text, const int& indent, bool indentFirst);

private:
    friend class CResultIndent;
    friend class CCodeShare;
    friend class CMemberResultTestAccess;

    static double At(const std::vector<double>& values, int i);
    static double MaxOf(const std::vector<double>& values, int* index);
    void SetLocal(std::vector<double>& component, double util, int failFlag);
    void SetBuckling(double& component, double util, int failFlag, bool failsAtLimit);
    void RaiseLocalCombined(double util);
    void RaiseBucklingCombined(double util);
    void RaiseOverAll(double util);

    void ReallyAddVerbose(const CString& text);
    void ClearIndentVerbose() { m_viIndent.clear(); }
    void PushIndentVerbose(int levels);
    int PopIndentVerbose();
    int GetIndentVerbose() const;
    /// Same effect as `*this += copy`, where `copy` is this record with empty texts, `addedText` and, if `failedLT`, a
    /// failure in lateral-torsional buckling.
    void MergeScratch(const CString& addedText, bool failedLT);
    /// An infinite utilisation in lateral-torsional buckling with its failure flags, raised even where it was infinite before.
    void FailBucklingLT();
    /// The text of the current position, about to be changed.
    CString& TextHere();

    int m_iLoadFlags = LOAD_AXIAL | LOAD_MAJOR | LOAD_MINOR | LOAD_TORSION;
    int m_iFlags = 0;
    bool m_bTextEnabled = true;
    int m_iCurSubSpan = 0;
    bool m_bIncBuckChk = true;
    double m_dUtilOverAll = 0.0;
    std::vector<double> m_vUtilLocalCombined;
    std::vector<double> m_vUtilLocalAxial;
    std::vector<double> m_vUtilLocalMomMajor;
    std::vector<double> m_vUtilLocalMomMinor;
    std::vector<double> m_vUtilLocalShearMajor;
    std::vector<double> m_vUtilLocalShearMinor;
    std::vector<double> m_vUtilLocalTorsion;
    double m_dUtilBucklingCombined = 0.0;
    double m_dUtilBucklingLT = 0.0;
    double m_dUtilBucklingAxialMajor = 0.0;
    double m_dUtilBucklingAxialMinor = 0.0;
    double m_dUtilBucklingAxialTorsion = 0.0;
    double m_dUtilBucklingAxialFlexuralTorsion = 0.0;
    CDesFormat m_format;
    std::vector<CString> m_vstrVerbose;
    std::vector<int> m_viIndent;
    /// The first text is empty and all others are the not-stored note: merging such a record need not write them anew.
    bool m_bTextsAreNotes = false;
};

/// Scope of one indentation level in the text of a result: from its construction to its end, text is one tab deeper.
/// Does nothing for a null result or one whose text is disabled. The result must outlive the scope.
class KELTRIX_STEEL_API CResultIndent {
public:
    explicit CResultIndent(CMemberResult* result);
    CResultIndent(const CResultIndent&) = delete;
    CResultIndent& operator=(const CResultIndent&) = delete;
    ~CResultIndent();

private:
    CMemberResult* m_pResult;
};

} // namespace Keltrix::Steel
