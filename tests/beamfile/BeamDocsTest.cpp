// docs/beam-file.md and its schema against the reader: every sample is a beam, every key of the reader is in a sample and in the schema.

#include <algorithm>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "beamfile/BeamSupport.h"
#include "beamfile/Toml.h"
#include "support/SchemaValidator.h"
#include "text/Json.h"

namespace Keltrix::BeamTest {
namespace {

std::string FileText(const std::string& path)
{
    std::ifstream in(KELTRIX_SOURCE_DIR "/" + path, std::ios::binary);
    EXPECT_TRUE(in) << path;
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

struct Sample {
    int line;
    std::string text;
};

std::vector<Sample> Samples()
{
    std::vector<Sample> samples;
    std::istringstream in(FileText("docs/beam-file.md"));
    std::string line;
    bool isIn = false;
    for (int number = 1; std::getline(in, line); ++number) {
        if (line.rfind("```", 0) == 0) {
            isIn = line == "```toml";
            if (isIn) samples.push_back({number, {}});
        } else if (isIn) {
            samples.back().text += line + '\n';
        }
    }
    return samples;
}

// A fragment with what it leaves out.
std::string Completed(const std::string& sample)
{
    const auto has = [&](const std::string& start) {
        return sample.rfind(start, 0) == 0 || sample.find('\n' + start) != std::string::npos;
    };
    std::string keys;
    if (!has("section")) keys += "section = \"UB 457x191x67\"\n";
    if (!has("grade")) keys += "grade = \"S275\"\n";
    if (!has("length") && !has("spans")) keys += "length = 9.0\n";
    return keys + sample + (has("[[load]]") ? "" : "[[load]]\nkind = \"imposed\"\nudl = 5.0\n");
}

// The keys that the reader knows in a table, as its message of an unknown one lists them.
std::set<std::string> KnownKeys(const std::string& text)
{
    const std::string messages = Messages(text);
    const std::string start = "unknown key \"zzz\", expected ";
    const std::size_t at = messages.find(start);
    EXPECT_NE(at, std::string::npos) << messages;
    std::string list = messages.substr(at + start.size());
    list = list.substr(0, list.find('\n'));
    std::set<std::string> keys;
    for (std::string word; !list.empty();) {
        const std::size_t end = std::min(list.find(", "), list.find(" or "));
        keys.insert(list.substr(0, end));
        list = end == std::string::npos ? "" : list.substr(end + (list[end] == ',' ? 2 : 4));
    }
    return keys;
}

// By the name of the table; "" is the file itself.
std::map<std::string, std::set<std::string>> AllKeys()
{
    return {{"", KnownKeys("zzz = 1\n")},
            {"supports", KnownKeys("supports = [{ zzz = 1 }]\n")},
            {"restraint", KnownKeys("[[restraint]]\nzzz = 1\n")},
            {"case", KnownKeys("[[case]]\nzzz = 1\n")},
            {"combination", KnownKeys("[[combination]]\nzzz = 1\n")},
            {"deflection", KnownKeys("deflection = { zzz = 1 }\n")},
            {"effective-lengths", KnownKeys("effective-lengths = { zzz = 1 }\n")},
            {"grade", KnownKeys("grade = { zzz = 1 }\n")}};
}

// Those of a load depend on its shape.
std::set<std::string> LoadKeys()
{
    std::set<std::string> keys;
    for (const char* shape : {"udl = 1", "trapezoid = [1, 2]", "point = 1", "moment = 1", "axial = 1", "reaction = 1"})
        keys.merge(KnownKeys("[[load]]\n" + std::string(shape) + "\nzzz = 1\n"));
    return keys;
}

TEST(BeamDocs, EverySampleIsABeam)
{
    const std::vector<Sample> samples = Samples();
    EXPECT_GE(samples.size(), 10u);
    for (const Sample& sample : samples) {
        const Beam beam = Read(Completed(sample.text));
        EXPECT_FALSE(beam.made.HasErrors()) << "docs/beam-file.md:" << sample.line << '\n' << Messages(beam);
    }
}

TEST(BeamDocs, EveryKeyIsInASample)
{
    std::string text;
    for (const Sample& sample : Samples())
        text += sample.text;
    auto all = AllKeys();
    all["load"] = LoadKeys();
    for (const auto& [table, keys] : all) {
        EXPECT_FALSE(keys.empty()) << table;
        for (const std::string& key : keys) {
            const bool isTable = text.find("[[" + key + "]]") != std::string::npos;
            EXPECT_TRUE(isTable || text.find(key + " = ") != std::string::npos) << table << '.' << key;
        }
    }
}

// The properties of an object in the schema, through a reference, a list or a choice.
std::set<std::string> Properties(const Json& schema, const Json& node)
{
    if (node.contains("$ref")) {
        const std::string name = node["$ref"].get<std::string>();
        return Properties(schema, schema["$defs"][name.substr(name.rfind('/') + 1)]);
    }
    if (node.contains("items")) return Properties(schema, node["items"]);
    std::set<std::string> names;
    if (node.contains("properties"))
        for (const auto& [name, value] : node["properties"].items())
            names.insert(name);
    for (const char* choice : {"oneOf", "anyOf"})
        if (node.contains(choice))
            for (const Json& one : node[choice])
                names.merge(Properties(schema, one));
    return names;
}

Json JsonOf(const toml::node& node)
{
    if (const toml::table* const table = node.as_table()) {
        Json json = Json::object();
        for (const auto& [key, value] : *table)
            json[std::string(key.str())] = JsonOf(value);
        return json;
    }
    if (const toml::array* const list = node.as_array()) {
        Json json = Json::array();
        for (const toml::node& item : *list)
            json.push_back(JsonOf(item));
        return json;
    }
    if (const auto* const text = node.as_string()) return text->get();
    if (const auto* const flag = node.as_boolean()) return flag->get();
    return node.value<double>().value();
}

TEST(BeamDocs, TheSchemaTakesExamplesAndSamples)
{
    const Json schema = Json::parse(FileText("docs/beam-file.schema.json"));
    std::vector<std::string> texts;
    for (const char* name : {"floor_beam", "two_span", "rafter", "column", "chord", "brace"})
        texts.push_back(FileText("examples/" + std::string(name) + ".toml"));
    for (const Sample& sample : Samples())
        texts.push_back(Completed(sample.text));
    for (const std::string& text : texts)
        EXPECT_EQ(TestSupport::SchemaValidator(schema).Check(JsonOf(toml::parse(text))), "") << text;
    // It refuses what the reader refuses.
    for (const char* wrong : {"lenght = 9\n", "length = -9\n", "load = { udl = \"12\" }\n", "camber = []\n",
                              "supports = [{ hold = \"Pinned\" }]\n", "combinations = \"bs595\"\n"})
        EXPECT_NE(TestSupport::SchemaValidator(schema).Check(
                      JsonOf(toml::parse("section = \"x\"\ngrade = \"S275\"\n" + std::string(wrong)))),
                  "")
            << wrong;
}

TEST(BeamDocs, TheSchemaHasTheKeysOfTheReader)
{
    const Json schema = Json::parse(FileText("docs/beam-file.schema.json"));
    auto all = AllKeys();
    EXPECT_EQ(Properties(schema, schema), all[""]);
    all.erase("");
    all["load"] = LoadKeys();
    for (const auto& [table, keys] : all)
        EXPECT_EQ(Properties(schema, schema["properties"][table]), keys) << table;
}

// What the first screen shows is the file that its commands read.
TEST(BeamDocs, TheReadmeShowsTheExample)
{
    const std::string readme = FileText("README.md");
    const std::string example = FileText("examples/floor_beam.toml");
    const std::string shown = example.substr(example.find('\n') + 1);
    EXPECT_GT(shown.size(), 300U);
    EXPECT_NE(readme.find("```toml\n" + shown + "```\n"), std::string::npos);
}

} // namespace
} // namespace Keltrix::BeamTest
