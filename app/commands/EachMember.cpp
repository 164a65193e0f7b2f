#include "commands/EachMember.h"

namespace Keltrix::App {

ExitCode ForEachMember(const std::vector<std::string>& files, const Console& console,
                       const std::function<ExitCode(const MemberFile&, std::size_t)>& use)
{
    ExitCode worst = EXIT_FINE;
    const auto attempt = [&](const std::function<void()>& action) {
        try {
            action();
        } catch (const BadInput& failure) {
            console.err(failure.what());
            worst = EXIT_BAD_INPUT;
        }
    };
    for (const std::string& path : files) {
        attempt([&] {
            const MemberFile file = MemberFile::Read(path, console.in);
            for (const Defect& defect : file.Check().defects)
                console.err(defect.Text(file.Name()));
            for (std::size_t i = 0; i < file.MemberCount(); ++i) {
                if (file.Member(i).hasErrors) {
                    worst = EXIT_BAD_INPUT;
                    continue;
                }
                attempt([&] { worst = Worse(worst, use(file, i)); });
            }
        });
    }
    return worst;
}

} // namespace Keltrix::App
