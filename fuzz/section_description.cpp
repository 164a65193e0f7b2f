// Section descriptions: catalogue designations and parametric forms.
#include <array>

#include "Fuzz.h"
#include "keltrix/platform/KxData.h"
#include "keltrix/platform/KxUtil.h"

using namespace Keltrix;

namespace {

constexpr std::array DIMENSIONS{CSecGeom::DEPTH,
                                CSecGeom::WIDTH,
                                CSecGeom::WEB_THICKNESS,
                                CSecGeom::FLANGE_THICKNESS,
                                CSecGeom::BOTTOM_FLANGE_WIDTH,
                                CSecGeom::BOTTOM_FLANGE_THICKNESS,
                                CSecGeom::ROOT_RADIUS,
                                CSecGeom::TOE_RADIUS};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const CString text = Fuzz::Text(Fuzz::Bytes(data, size));
    CSecDB section(CString(), CSectDB::GetDatabase());
    if (!section.SetUpFromDesc(text)) {
        Fuzz::Require(section.Shape() == 0, "an unknown description gives shape 0", text);
        for (const CSecGeom::Prop dimension : DIMENSIONS)
            Fuzz::Require(section.Dimension(0.0, dimension) == 0.0, "an unknown description gives no dimensions", text);
        Fuzz::Require(section.UserDesc() == text, "an unknown description is kept as it was given", text,
                      section.UserDesc());
        // Short texts only: looking at the whole catalogue takes a thousand times as long as all the rest here.
        if (size <= 6)
            Fuzz::Require(CSectDB::GetDatabase()->Suggest(text, 3).size() <= 3, "no more suggestions than asked for",
                          text);
        return 0;
    }
    Fuzz::Require(section.Shape() != 0, "a known description has a shape", text);
    for (const CSecGeom::Prop dimension : DIMENSIONS)
        Fuzz::Require(section.Dimension(0.0, dimension) >= 0.0, "no dimension is negative or not a number", text);

    const CString description = section.Description(true);
    Fuzz::Require(description.Find(L',') < 0, "a description holds no comma", text, description);
    CSecDB again(CString(), CSectDB::GetDatabase());
    Fuzz::Require(again.SetUpFromDesc(description), "the description sets the section up again", text, description);
    Fuzz::Require(again.Shape() == section.Shape(), "with the same shape", text, description);
    Fuzz::Require(again.Description(true) == description, "and describes itself the same", description,
                  again.Description(true));
    for (const CSecGeom::Prop dimension : DIMENSIONS)
        Fuzz::Require(again.Dimension(0.0, dimension) == section.Dimension(0.0, dimension), "with the same dimensions",
                      text, description);
    return 0;
}
