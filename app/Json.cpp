#include "Json.h"

namespace Keltrix::App {

std::string JsonText(const Json& document)
{
    return document.dump(2, ' ', false, Json::error_handler_t::replace) + '\n';
}

} // namespace Keltrix::App
