#pragma once

// JSON against a JSON Schema of the documents.

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>

#include "text/Json.h"

namespace Keltrix::TestSupport {

/// Knows the words that the project's schemas use; any other one is a departure, so that no rule of a schema is passed over in silence.
/// Names beyond `properties` are departures, unless `additionalProperties` has a schema for them: the schemas of outputs are open for readers,
/// and here they are closed, so that no name is added without its line in the schema.
class SchemaValidator {
public:
    /// The schema lives as long as this. `folder` is where other files that it refers to stand, with its slash.
    explicit SchemaValidator(const Host::Json& schema, std::string folder = {}) :
        m_root(schema), m_folder(std::move(folder))
    {}

    /// The first departure of a value with its place, "$[0].title: 5 is no \"string\""; empty where there is none.
    std::string Check(const Host::Json& value) const { return Check(value, m_root, "$"); }

private:
    using Json = Host::Json;

    std::string Check(const Json& value, const Json& schema, const std::string& at) const
    {
        for (const auto& [word, rule] : schema.items()) {
            std::string fault = CheckWord(value, schema, word, rule, at);
            if (!fault.empty()) return fault;
        }
        return {};
    }

    std::string CheckWord(const Json& value, const Json& schema, const std::string& word, const Json& rule,
                          const std::string& at) const
    {
        for (const char* silent : {"$schema", "$id", "$defs", "title", "description", "default"})
            if (word == silent) return {};
        if (word == "$ref") return CheckReference(value, rule.get<std::string>(), at);
        if (word == "type") return IsOfType(value, rule) ? "" : at + ": " + value.dump() + " is no " + rule.dump();
        if (word == "enum")
            return std::find(rule.begin(), rule.end(), value) != rule.end()
                       ? ""
                       : at + ": " + value.dump() + " is none of " + rule.dump();
        if (word == "const") return value == rule ? "" : at + ": " + value.dump() + " is not " + rule.dump();
        if (word == "anyOf" || word == "oneOf") return CheckAlternatives(value, word, rule, at);
        if (word == "items") return CheckItems(value, rule, at);
        if (word == "properties") return CheckProperties(value, schema, rule, at);
        if (word == "additionalProperties")
            return schema.contains("properties") ? "" : CheckProperties(value, schema, Json::object(), at);
        if (word == "required") return CheckRequired(value, rule, at);
        return CheckSize(value, word, rule, at);
    }

    static std::string CheckSize(const Json& value, const std::string& word, const Json& rule, const std::string& at)
    {
        if (word == "minimum") return !value.is_number() || value >= rule ? "" : at + ": below " + rule.dump();
        if (word == "maximum") return !value.is_number() || value <= rule ? "" : at + ": above " + rule.dump();
        if (word == "exclusiveMinimum")
            return !value.is_number() || value > rule ? "" : at + ": not above " + rule.dump();
        if (word == "minItems") return !value.is_array() || value.size() >= rule ? "" : at + ": too few items";
        if (word == "maxItems") return !value.is_array() || value.size() <= rule ? "" : at + ": too many items";
        if (word == "minProperties") return !value.is_object() || value.size() >= rule ? "" : at + ": too few members";
        if (word == "maxProperties") return !value.is_object() || value.size() <= rule ? "" : at + ": too many members";
        const auto length = value.is_string() ? value.get_ref<const std::string&>().size() : 0;
        if (word == "minLength") return !value.is_string() || length >= rule ? "" : at + ": too short";
        if (word == "maxLength") return !value.is_string() || length <= rule ? "" : at + ": too long";
        return at + ": the schema has a word that is not known here: " + word;
    }

    // "#/$defs/span", or of another file "check.schema.json#/$defs/warning".
    std::string CheckReference(const Json& value, const std::string& name, const std::string& at) const
    {
        const std::size_t hash = name.find("#/$defs/");
        if (hash == std::string::npos) return at + ": unknown reference " + name;
        const std::string definition = name.substr(hash + 8);
        if (hash == 0) return Check(value, m_root.at("$defs").at(definition), at);
        std::ifstream in(m_folder + name.substr(0, hash), std::ios::binary);
        const Json other = Json::parse(std::string(std::istreambuf_iterator<char>(in), {}));
        return SchemaValidator(other, m_folder).Check(value, other.at("$defs").at(definition), at);
    }

    static bool IsOfType(const Json& value, const Json& rule)
    {
        if (rule.is_array())
            return std::any_of(rule.begin(), rule.end(), [&](const Json& one) { return IsOfType(value, one); });
        const std::string type = rule.get<std::string>();
        if (type == "number") return value.is_number();
        if (type == "integer") return value.is_number_integer();
        if (type == "string") return value.is_string();
        if (type == "boolean") return value.is_boolean();
        if (type == "array") return value.is_array();
        if (type == "object") return value.is_object();
        return type == "null" && value.is_null();
    }

    std::string CheckAlternatives(const Json& value, const std::string& word, const Json& rule,
                                  const std::string& at) const
    {
        std::string faults;
        std::size_t fitting = 0;
        for (const Json& one : rule) {
            const std::string fault = Check(value, one, at);
            fitting += fault.empty() ? 1 : 0;
            if (!fault.empty()) faults += "\n  " + fault;
        }
        if (fitting == 0) return at + ": none of the alternatives fits:" + faults;
        return fitting > 1 && word == "oneOf" ? at + ": more than one of the alternatives fits" : "";
    }

    std::string CheckItems(const Json& value, const Json& rule, const std::string& at) const
    {
        if (!value.is_array()) return {};
        for (std::size_t i = 0; i < value.size(); ++i) {
            std::string fault = Check(value[i], rule, at + "[" + std::to_string(i) + "]");
            if (!fault.empty()) return fault;
        }
        return {};
    }

    std::string CheckProperties(const Json& value, const Json& schema, const Json& rule, const std::string& at) const
    {
        if (!value.is_object()) return {};
        const bool isOpen = schema.contains("additionalProperties") && schema.at("additionalProperties").is_object();
        for (const auto& [name, one] : value.items()) {
            const std::string place = at + "." + name;
            if (!rule.contains(name) && !isOpen) return at + ": has \"" + name + "\", which the schema does not";
            std::string fault =
                Check(one, rule.contains(name) ? rule.at(name) : schema.at("additionalProperties"), place);
            if (!fault.empty()) return fault;
        }
        return {};
    }

    static std::string CheckRequired(const Json& value, const Json& rule, const std::string& at)
    {
        if (!value.is_object()) return {};
        for (const Json& name : rule)
            if (!value.contains(name.get<std::string>())) return at + ": lacks " + name.dump();
        return {};
    }

    const Json& m_root;
    std::string m_folder;
};

} // namespace Keltrix::TestSupport
