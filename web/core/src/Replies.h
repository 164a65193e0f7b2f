#pragma once

#include <string_view>

#include "text/JsonFwd.h"

// One function for each request of the page: its JSON, and the bytes of the file that it is about. They throw BadInput.
namespace Keltrix::Web {

// CheckRequests.cpp: beams, and what a check says of them.
Host::Json Codes(const Host::Json& request, std::string_view bytes);
Host::Json Document(const Host::Json& request, std::string_view bytes);
Host::Json Check(const Host::Json& request, std::string_view bytes);
Host::Json Steps(const Host::Json& request, std::string_view bytes);
Host::Json Lines(const Host::Json& request, std::string_view bytes);
Host::Json Sheet(const Host::Json& request, std::string_view bytes);

// SectionRequests.cpp: the catalogue, and which section would do.
Host::Json Sections(const Host::Json& request, std::string_view bytes);
Host::Json Section(const Host::Json& request, std::string_view bytes);
Host::Json Lightest(const Host::Json& request, std::string_view bytes);
Host::Json Capacity(const Host::Json& request, std::string_view bytes);

// BucklingRequest.cpp.
Host::Json Buckling(const Host::Json& request, std::string_view bytes);

// MemberRequests.cpp: member files, from tables of forces or in pieces.
Host::Json Conventions(const Host::Json& request, std::string_view bytes);
Host::Json ImportTables(const Host::Json& request, std::string_view bytes);
Host::Json BeginBatch(const Host::Json& request, std::string_view bytes);
Host::Json AddToBatch(const Host::Json& request, std::string_view bytes);

} // namespace Keltrix::Web
