#include "io/CodeModule.h"

#include "io/Failure.h"
#include "text/Text.h"

#if defined(_WIN32) || defined(KELTRIX_STEEL_STATIC)

namespace Keltrix::App {

const Design::DesignCode& LoadCodeModule(const std::string& file)
{
    throw BadInput(PrintableLine(file) + ": this ksteel cannot load design codes from files");
}

} // namespace Keltrix::App

#else

#include <dlfcn.h>

#include <filesystem>

namespace Keltrix::App {

namespace {

[[noreturn]] void Refuse(const std::string& file, const std::string& why)
{
    throw BadInput("--module: " + PrintableLine(file) + ": " + PrintableLine(why));
}

// The loader's own words, without the name of the file in front.
std::string LoaderMessage(const std::string& path)
{
    const char* const message = dlerror();
    std::string text = message ? message : "unknown reason";
    if (text.rfind(path + ": ", 0) == 0) text.erase(0, path.size() + 2);
    return text;
}

const Design::CodeModule* EntryOf(void* library, const std::string& file)
{
    using Entry = const Design::CodeModule* (*)();
    // POSIX gives functions as addresses of objects.
    const auto entry = reinterpret_cast<Entry>(dlsym(library, Design::CODE_MODULE_ENTRY));
    if (!entry)
        Refuse(file, std::string("no module with a design code: it has no function ") + Design::CODE_MODULE_ENTRY);
    return entry();
}

} // namespace

const Design::DesignCode& LoadCodeModule(const std::string& file)
{
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(file, error);
    if (status.type() == std::filesystem::file_type::not_found) Refuse(file, "no such file");
    if (status.type() != std::filesystem::file_type::regular) Refuse(file, "no file that can be read");
    // A name without a folder would be looked for where the system's libraries are.
    const std::string path = std::filesystem::absolute(file).string();
    void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library) Refuse(file, "cannot be loaded: " + LoaderMessage(path));
    const Design::CodeModule* const module = EntryOf(library, file);
    // The version first: of a module of another version nothing else is where this program looks for it.
    if (module && module->interfaceVersion != Design::INTERFACE_VERSION)
        Refuse(file, "built for version " + std::to_string(module->interfaceVersion) +
                         " of the interface of design codes, this ksteel has version " +
                         std::to_string(Design::INTERFACE_VERSION));
    if (!module || !module->code) Refuse(file, "no module with a design code: it gives none");
    return *module->code;
}

} // namespace Keltrix::App

#endif
