#include "io/TemporarySheets.h"

#include "io/Failure.h"
#include "io/Output.h"

namespace Keltrix::App {

TemporarySheets::TemporarySheets() : m_file(OpenTemporaryFile(), std::fclose) {}

void TemporarySheets::Add(std::string_view sheet)
{
    Place place{{}, sheet.size()}; // what ftell gives ends at 2 GiB on some systems
    if (std::fgetpos(m_file.get(), &place.start) != 0 ||
        std::fwrite(sheet.data(), 1, sheet.size(), m_file.get()) != sheet.size())
        throw BadOutput("a temporary file cannot be written");
    m_places.push_back(place);
}

std::string TemporarySheets::Sheet(std::size_t i)
{
    std::string sheet(m_places[i].length, '\0');
    if (std::fsetpos(m_file.get(), &m_places[i].start) != 0 ||
        std::fread(sheet.data(), 1, sheet.size(), m_file.get()) != sheet.size())
        throw BadOutput("a temporary file cannot be read");
    return sheet;
}

} // namespace Keltrix::App
