#pragma once

#include <array>
#include <vector>

#include "keltrix/platform/CString.h"
#include "keltrix/platform/Export.h"
#include "keltrix/platform/KxUtil.h"

namespace Keltrix {

/// How a section is made. Any other value can be stored and is kept.
enum SecType : int {
    SEC_UNDEF = 0,  ///< not said: rolled or welded follows from the shape word
    SEC_ROLLED = 1, ///< hot rolled or hot finished
    SEC_WELDED = 2,
    SEC_FORMED = 3, ///< cold formed
    SEC_WELDED_2 = 4,
    SEC_OTHER = 5
};

/// The host's plate type of a section component. Any value can be stored and is kept.
enum PlateType : int { PLATE_NONE = 0, PLATE_1 = 1, PLATE_2 = 2 };

/// Fire exposure of a section.
enum ExposureType : int { EXPOSURE_NONE = 0, EXPOSURE_4_SIDES = 1, EXPOSURE_3_SIDES = 2 };

/// "UNDEF", "ROLLED", "WELDED", "FORMED" for 0 to 3; "UNDEF" for every other value.
KELTRIX_PLATFORM_API CString SecTypeString(SecType type);

/// Geometry of a section component: a shape word and its dimensions in m.
class KELTRIX_PLATFORM_API CSecGeom {
public:
    /// Numbers of the dimensions. Every number from 0 to 15 can be stored; the shapes use these.
    enum Prop : int {
        DEPTH = 0,
        WIDTH = 1, ///< of the top flange where the two differ
        WEB_THICKNESS = 2,
        FLANGE_THICKNESS = 3, ///< of the top flange where the two differ
        BOTTOM_FLANGE_WIDTH = 4,
        BOTTOM_FLANGE_THICKNESS = 6,
        ROOT_RADIUS = 10,
        TOE_RADIUS = 11
    };
    /// Shape codes: what is left of the shape word under SHAPE_MASK.
    KELTRIX_CONSTANT static constexpr int SHAPE_MASK = 0x140f;
    KELTRIX_CONSTANT static constexpr int SHAPE_I = 1;
    KELTRIX_CONSTANT static constexpr int SHAPE_GENERAL_I = 11;
    KELTRIX_CONSTANT static constexpr int SHAPE_CHANNEL = 3;
    KELTRIX_CONSTANT static constexpr int SHAPE_T = 4;
    KELTRIX_CONSTANT static constexpr int SHAPE_ANGLE = 5;
    KELTRIX_CONSTANT static constexpr int SHAPE_CHS = 7;
    KELTRIX_CONSTANT static constexpr int SHAPE_RHS = 9;
    /// Any of these bits in the shape word of a component of type SEC_UNDEF says that it is built up from plates.
    KELTRIX_CONSTANT static constexpr int BUILT_UP_MASK = 0x1f0;

    CSecGeom() = default;
    CSecGeom(const CSecGeom&) = default;
    CSecGeom& operator=(const CSecGeom&) = default;
    virtual ~CSecGeom();

    int Shape() const { return m_iShape; }
    /// Stores the shape word unchanged. A designation taken over from the catalogue is forgotten.
    void SetShape(int shape);
    /// A dimension in m, 0 where none was set or the number is unknown. The first argument is a position along a
    /// tapered component; components of this platform are prismatic and do not look at it.
    double Dimension(double position, Prop prop) const;
    /// Sets a dimension in m. A designation taken over from the catalogue is forgotten.
    void SetDimension(Prop prop, double metres);

    /// The description from which the section can be set up again: the catalogue designation, or the parametric
    /// form in mm; empty for shape 0. With `brief` false, the dimensions follow the designation in brackets.
    CString Description(bool brief) const;

    /// Takes over shape word, dimensions and designation of another geometry.
    void SetSecGeom(const CSecGeom& other);

protected:
    void SetDesignation(const CString& designation) { m_strDesignation = designation; }

private:
    int m_iShape = 0; // first member: hosts read the shape word at this place
    std::array<double, 16> m_dimensions{};
    CString m_strDesignation;
};

/// A section component: geometry, the way it is made, and the design ratios a host keeps with it.
class KELTRIX_PLATFORM_API CSecComp : public CSecGeom {
public:
    CSecComp() = default;
    CSecComp(const CSecComp&) = default;
    CSecComp& operator=(const CSecComp&) = default;
    ~CSecComp() override;

    SecType Type() const { return m_eType; }
    /// Stores any value unchanged.
    void SetType(int type) { m_eType = static_cast<SecType>(type); }
    PlateType Plate() const { return m_ePlate; }
    /// Stores any value unchanged.
    void SetPlate(int plate) { m_ePlate = static_cast<PlateType>(plate); }
    /// Net to gross area ratio.
    double NetGross() const { return m_dNetGross; }
    void SetNetGross(double ratio) { m_dNetGross = ratio; }
    /// Beta (shear lag) factor.
    double Beta() const { return m_dBeta; }
    void SetBeta(double beta) { m_dBeta = beta; }
    /// Allowable ratio of plastic to elastic modulus; 0 when the host gives none.
    double PlasElas() const { return m_dPlasElas; }
    void SetPlasElas(double ratio) { m_dPlasElas = ratio; }
    int MaterialType() const { return m_iMaterialType; }
    void SetMaterialType(int type) { m_iMaterialType = type; }
    int MaterialAnalysis() const { return m_iMaterialAnalysis; }
    void SetMaterialAnalysis(int analysis) { m_iMaterialAnalysis = analysis; }

private:
    SecType m_eType = SEC_UNDEF;
    PlateType m_ePlate = PLATE_NONE;
    double m_dNetGross = 1.0;
    double m_dBeta = 0.7;
    double m_dPlasElas = 1.2;
    int m_iMaterialType = 0;
    int m_iMaterialAnalysis = 0;
};

/// Geometry set up from a section description, over a catalogue.
///
/// Descriptions hold no comma. Catalogue designations: "UB 457x191x67", "L 150x75x10", "CFRHS 200x100x6". Parametric,
/// in mm: "I DxBxtxT[xr]", "GI DxB1xB2xtxT1xT2[xr]", "C DxBxtxT[xrxrt]", "TEE DxBxtxT[xrxrt]", "ANGLE AxBxt[xrxrt]",
/// "BOX DxBxtxT", "TUBE Dxt", with t the web and T the flange thickness, r the root and rt the toe radius.
/// Letter case, blanks around "x" and the multiplication sign (also "*") are forgiven; more spellings of designations: CSectDB::Find.
class KELTRIX_PLATFORM_API CSecDB : public CSecGeom {
public:
    /// Without a catalogue (null) only parametric descriptions can be set up.
    CSecDB(const CString& name, const CSectDB* database);
    CSecDB(const CSecDB&) = default;
    CSecDB& operator=(const CSecDB&) = default;
    ~CSecDB() override;

    void SetSectDB(const CSectDB* database) { m_pDatabase = database; }
    /// Sets shape and dimensions from a description. An unknown one gives shape 0, no dimensions and false.
    bool SetUpFromDesc(const CString& description);
    /// The short user form of the description that was set up; the text as given when it was unknown.
    CString UserDesc() const;
    const CString& Name() const { return m_strName; }
    /// Type of the catalogue row or of the parametric form that was set up (SEC_UNDEF where it says nothing).
    SecType CatalogueType() const { return m_eCatalogueType; }

private:
    CString m_strName;
    const CSectDB* m_pDatabase;
    CString m_strUserDesc;
    SecType m_eCatalogueType = SEC_UNDEF;
};

/// A cross-section made of components. Component 0 always exists.
class KELTRIX_PLATFORM_API CSection : public BaseEntity {
public:
    /// A description that is not empty sets up component 0 over the shared catalogue; the name is the description.
    explicit CSection(const CString& description = CString());

    /// Component i; 0 <= i < NumComponents().
    const CSecComp& Component(int i) const { return m_components[static_cast<std::size_t>(i)]; }
    /// Puts a component at place i >= 0, with default components in any gap below it.
    void SetComponent(int i, const CSecComp& component);
    int NumComponents() const { return static_cast<int>(m_components.size()); }

private:
    std::vector<CSecComp> m_components;
};

/// A steel grade: its name, and strengths that count when the user gives them (0 where he does not), in Pa.
class KELTRIX_PLATFORM_API CSteelGrade {
public:
    CSteelGrade() = default;
    CSteelGrade(const CString& name, double userPy, double userPu, double userE, double matFactor) :
        m_strName(name), m_dUserPy(userPy), m_dUserPu(userPu), m_dUserE(userE), m_dMatFactor(matFactor)
    {}

    CString Name() const { return m_strName; }
    /// Design strength, ultimate strength and modulus of elasticity given by the user, Pa.
    double GetUserPy() const { return m_dUserPy; }
    double GetUserPu() const { return m_dUserPu; }
    double GetUserE() const { return m_dUserE; }
    /// Partial factor of the material.
    double GetMatFactor() const { return m_dMatFactor; }

    friend bool operator==(const CSteelGrade&, const CSteelGrade&) = default;

private:
    CString m_strName;
    double m_dUserPy = 0.0;
    double m_dUserPu = 0.0;
    double m_dUserE = 0.0;
    double m_dMatFactor = 1.0;
};

} // namespace Keltrix
