#include "check/CodesJson.h"

#include "check/DesignCodes.h"
#include "text/Json.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

const char* KindName(Design::OptionKind kind)
{
    switch (kind) {
    case Design::OptionKind::Choice:
        return "choice";
    case Design::OptionKind::Length:
        return "length";
    default:
        return "flag";
    }
}

Json JsonOf(const std::vector<Design::Term>& terms)
{
    Json list = Json::array();
    for (const Design::Term& term : terms)
        list.push_back({{"name", Utf8(term.name)}, {"meaning", Utf8(term.meaning)}});
    return list;
}

Json JsonOf(const Design::CodeOption& option)
{
    const bool isLength = option.kind == Design::OptionKind::Length;
    return {{"name", Utf8(option.name)},
            {"kind", KindName(option.kind)},
            {"meaning", Utf8(option.meaning)},
            {"values", JsonOf(option.values)},
            {"least", isLength ? Json(option.least) : Json()},
            {"most", isLength ? Json(option.most) : Json()}};
}

Json JsonOf(const Design::CodeDescription& d, bool isDefault)
{
    Json options = Json::array();
    for (const Design::CodeOption& option : d.options)
        options.push_back(JsonOf(option));
    return {{"schema", JSON_SCHEMA},          {"id", Utf8(d.id)},           {"title", Utf8(d.title)},
            {"edition", Utf8(d.edition)},     {"default", isDefault},       {"scope", Utf8(d.scope)},
            {"families", JsonOf(d.families)}, {"grades", JsonOf(d.grades)}, {"annexes", JsonOf(d.annexes)},
            {"options", std::move(options)}};
}

} // namespace

Json CodesJson()
{
    Json list = Json::array();
    for (const Design::DesignCode* code : DesignCodes())
        list.push_back(JsonOf(code->Description(), code == DesignCodes().front()));
    return list;
}

} // namespace Keltrix::Host
