#pragma once

#include <string>
#include <string_view>

namespace Keltrix::Web {

/// What came of a request: JSON, or one sentence of what is wrong with it.
struct Reply {
    bool isRefused = false;
    std::string text;
};

/// One request of the page: a JSON object whose member "ask" says what is wanted, and the bytes of a beam or member file where the request is
/// about one. Never throws but std::bad_alloc. Requests of one batch belong together, all others stand alone.
Reply ReplyTo(std::string_view request, std::string_view bytes);

} // namespace Keltrix::Web
