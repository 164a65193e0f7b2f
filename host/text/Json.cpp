#include "text/Json.h"

#include "text/JsonWriter.h"

namespace Keltrix::Host {

std::string IndentedJson(const Json& document, int depth)
{
    JsonWriter writer = JsonWriter::Indented(depth);
    writer.Put(document);
    return writer.Take();
}

std::string JsonText(const Json& document) { return IndentedJson(document, 0) + '\n'; }

std::string JsonLine(const Json& document)
{
    JsonWriter writer;
    writer.Put(document);
    return writer.Take() + '\n';
}

} // namespace Keltrix::Host
