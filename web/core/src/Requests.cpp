#include "Requests.h"

#include <array>
#include <exception>
#include <new>

#include "Replies.h"
#include "RequestFields.h"
#include "text/BadInput.h"
#include "text/Json.h"
#include "text/Text.h"

namespace Keltrix::Web {

namespace {

using Host::BadInput;
using Host::Json;

struct Request {
    const char* name;
    Json (*reply)(const Json& request, std::string_view bytes);
};

constexpr std::array<Request, 15> REQUESTS{{{"codes", Codes},
                                            {"sections", Sections},
                                            {"section", Section},
                                            {"document", Document},
                                            {"check", Check},
                                            {"steps", Steps},
                                            {"lines", Lines},
                                            {"sheet", Sheet},
                                            {"buckling", Buckling},
                                            {"lightest", Lightest},
                                            {"capacity", Capacity},
                                            {"conventions", Conventions},
                                            {"import", ImportTables},
                                            {"begin batch", BeginBatch},
                                            {"add to batch", AddToBatch}}};

Json JsonReplyTo(std::string_view text, std::string_view bytes)
{
    const Json request = Json::parse(text, nullptr, false);
    if (!request.is_object()) throw BadInput("the request is no JSON object");
    const std::string asked = WordOf(request, "ask");
    for (const Request& known : REQUESTS)
        if (asked == known.name) return known.reply(request, bytes);
    throw BadInput("ask: got \"" + Host::PrintableLine(asked) + "\", which is no request");
}

} // namespace

Reply ReplyTo(std::string_view request, std::string_view bytes)
{
    try {
        return {false, Host::JsonLine(JsonReplyTo(request, bytes))};
    } catch (const BadInput& refusal) {
        return {true, refusal.what()};
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& failure) {
        return {true, std::string("this is a fault of the program: ") + failure.what()};
    }
}

} // namespace Keltrix::Web
