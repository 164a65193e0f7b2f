// The doors of the module. A request and its bytes are put where Reserve says, and the reply is read where ReplyText says.

#include <new>
#include <string>

#include "Requests.h"

#ifdef __EMSCRIPTEN__
#define KELTRIX_WEB_EXPORT(name) extern "C" __attribute__((export_name(#name)))
#else
#include <cstdio>
#define KELTRIX_WEB_EXPORT(name) static
#endif

namespace {

// Of the request first, of the bytes after it.
std::string input;
Keltrix::Web::Reply reply;

} // namespace

/// Room for `size` bytes; null where there is not enough memory.
KELTRIX_WEB_EXPORT(reserve) char* Reserve(std::size_t size)
{
    try {
        input.assign(size, '\0');
        return input.data();
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

/// Works on what stands in the room: a request of `length` bytes, then those of a file. 0 where there is a reply, 1 where the request was
/// refused, 2 where memory ended.
KELTRIX_WEB_EXPORT(answer) int Answer(std::size_t length)
{
    try {
        const std::string_view all = input;
        reply = Keltrix::Web::ReplyTo(all.substr(0, length), all.substr(length));
        return reply.isRefused ? 1 : 0;
    } catch (const std::bad_alloc&) {
        reply = {};
        return 2;
    }
}

KELTRIX_WEB_EXPORT(reply_text) const char* ReplyText() { return reply.text.data(); }
KELTRIX_WEB_EXPORT(reply_size) std::size_t ReplySize() { return reply.text.size(); }

#ifndef __EMSCRIPTEN__
// Reads "LENGTH OF REQUEST, LENGTH OF BYTES, line break, both" again and again, and writes "CODE LENGTH, line break, reply" for each.
int main()
{
    std::size_t request = 0;
    std::size_t bytes = 0;
    while (std::scanf("%zu %zu", &request, &bytes) == 2 && std::getchar() == '\n') {
        char* const room = Reserve(request + bytes);
        if (!room || std::fread(room, 1, request + bytes, stdin) != request + bytes) return 1;
        const int code = Answer(request);
        std::printf("%d %zu\n", code, ReplySize());
        std::fwrite(ReplyText(), 1, ReplySize(), stdout);
    }
    return 0;
}
#endif
