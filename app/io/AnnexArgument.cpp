#include "io/AnnexArgument.h"

#include <iostream>

#ifdef KELTRIX_HOST_WITH_STATICS
#include "check/AnnexFile.h"
#endif
#include "io/Input.h"
#include "text/BadInput.h"

namespace Keltrix::App {

void ChooseAnnex(const std::string& text, Host::CodeChoice& choice, const std::string& subject)
{
    if (!text.ends_with(".toml")) {
        choice.settings.annex = Host::AnnexNamed(*choice.code, text, subject);
        return;
    }
#ifdef KELTRIX_HOST_WITH_STATICS
    Host::ReadAnnexFile(text, ReadBytes(text, std::cin), choice);
#else
    throw Host::BadInput(subject + ": files of national choices need TOML, which this program is built without");
#endif
}

} // namespace Keltrix::App
