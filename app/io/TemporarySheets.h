#pragma once

#include <cstdio>
#include <memory>
#include <vector>

#include "report/HtmlReport.h"

namespace Keltrix::App {

/// Keeps sheets in a temporary file, so that memory holds one of them at a time. Throws BadOutput where the file cannot be made,
/// written or read.
class TemporarySheets : public Host::SheetStore {
public:
    TemporarySheets();
    void Add(std::string_view sheet) override;
    std::string Sheet(std::size_t i) override;

private:
    struct Place {
        std::fpos_t start;
        std::size_t length;
    };

    std::vector<Place> m_places;
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> m_file;
};

} // namespace Keltrix::App
