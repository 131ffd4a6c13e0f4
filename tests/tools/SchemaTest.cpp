#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <regex>
#include <string>

#include "support/TempFolder.h"
#include "tools/ToolRun.h"

namespace VeskTest {
namespace {

using Json = nlohmann::json;

bool hasType(const Json& value, const std::string& type) {
  if (type == "object") return value.is_object();
  if (type == "array") return value.is_array();
  if (type == "string") return value.is_string();
  if (type == "boolean") return value.is_boolean();
  if (type == "null") return value.is_null();
  if (type == "integer") return value.is_number_integer();
  return type == "number" && value.is_number();
}

// What breaks the schema, with its place; empty if nothing does. Of the words of
// JSON Schema those that docs/schema uses; another word is a breach too.
std::string breachOf(const Json& value, const Json& schema, const std::string& place) {
  if (!schema.is_object()) return {};
  for (const auto& [word, wanted] : schema.items()) {
    if (word == "$schema" || word == "title" || word == "description") continue;
    if (word == "type") {
      bool good = false;
      for (const Json& type : wanted.is_array() ? wanted : Json::array({wanted})) {
        good = good || hasType(value, type.get<std::string>());
      }
      if (!good) return place + ": not of type " + wanted.dump();
    } else if (word == "const") {
      if (value != wanted) return place + ": not " + wanted.dump();
    } else if (word == "enum") {
      if (std::find(wanted.begin(), wanted.end(), value) == wanted.end())
        return place + ": " + value.dump();
    } else if (word == "pattern") {
      if (value.is_string() &&
          !std::regex_search(value.get<std::string>(), std::regex(wanted.get<std::string>()))) {
        return place + ": " + value.dump();
      }
    } else if (word == "minItems" || word == "maxItems") {
      const bool isMin = word == "minItems";
      const auto size = value.size();
      const auto limit = wanted.get<std::size_t>();
      if (value.is_array() && (isMin ? size < limit : size > limit)) return place + ": " + word;
    } else if (word == "items") {
      if (!value.is_array()) continue;
      for (std::size_t i = 0; i < value.size(); ++i) {
        std::string breach = breachOf(value[i], wanted, place + "/" + std::to_string(i));
        if (!breach.empty()) return breach;
      }
    } else if (word == "required") {
      if (!value.is_object()) continue;
      for (const Json& key : wanted) {
        if (!value.contains(key.get<std::string>())) return place + ": no " + key.dump();
      }
    } else if (word == "properties") {
      if (!value.is_object()) continue;
      for (const auto& [key, inner] : wanted.items()) {
        if (!value.contains(key)) continue;
        std::string breach = breachOf(value[key], inner, place + "/" + key);
        if (!breach.empty()) return breach;
      }
    } else if (word == "additionalProperties") {
      if (!value.is_object()) continue;
      for (const auto& [key, inner] : value.items()) {
        if (schema.contains("properties") && schema["properties"].contains(key)) continue;
        if (wanted == false) return place + ": unexpected " + key;
        std::string breach = breachOf(inner, wanted, place + "/" + key);
        if (!breach.empty()) return breach;
      }
    } else {
      return place + ": the schema has an unknown word " + word;
    }
  }
  return {};
}

Json schemaOf(const std::string& name) {
  std::ifstream file(std::string(VESK_SCHEMA_FOLDER) + "/" + name + ".json");
  return Json::parse(file);
}

struct SchemaCase {
  const char* name;
  const char* schema;
  const char* arguments;  // G is the folder of golden files
  int exit;
};

constexpr SchemaCase kCases[] = {
    {"Info", "info", "info --json Gpump.dat Gelements.columns.dat", 0},
    {"InfoHeaders", "info", "info --json --headers Gpump.dat", 0},
    {"InfoEmpty", "info", "info --json empty.dat", 0},
    {"InfoMissing", "info", "info --json none.dat", 3},
    {"List", "list", "list --json Gelements.tokens.dat", 0},
    {"ListNothing", "list", "list --json empty.dat", 0},
    {"ListOddBytes", "list", "list --json odd.dat", 0},
    {"Show", "show", "show --json Gelements.columns.dat:6", 0},
    {"ShowDamaged", "show", "show --json bad.dat:1", 1},
    {"Measure", "measure", "measure --json --density 7850 Gpump.dat", 0},
    {"Diff", "diff", "diff --json Gpump.dat Gelements.tokens.dat", 1},
    {"DiffSame", "diff", "diff --json Gpump.dat Gpump.dat", 0},
    {"Export", "export", "export --report --json Gpump.dat", 0},
    {"ExportToAFile", "export", "export --report --json Gelements.tokens.dat -o x.stl", 1},
    {"ExportOfNothing", "export", "export --report --json empty.dat", 0},
    {"Import", "import", "import --json S pump", 0},
    {"Explain", "explain", "explain --json", 0},
    {"Version", "version", "version --json", 0},
};

class SchemaTest : public testing::TestWithParam<SchemaCase> {};

TEST_P(SchemaTest, DocumentKeepsIt) {
  const TempFolder folder;
  writeFile("empty.dat", "");
  writeFile("odd.dat", "P-\xFF\xC3\xA4   01001    00c 0 0 0,0 0 1000,100\n");
  writeFile("bad.dat", "P-1     01001    00c 0 0 0,0 0 1000x,100\n");
  const SchemaCase& each = GetParam();
  std::string arguments;
  for (const char* c = each.arguments; *c != '\0'; ++c) {
    if (*c == 'G') {
      arguments += golden("");
    } else if (*c == 'S') {
      arguments += VESK_PIPING_SAMPLE;
    } else {
      arguments += *c;
    }
  }
  const ToolRun run = runTool(arguments);
  EXPECT_EQ(run.exit, each.exit) << run.err;
  const Json document = Json::parse(run.out);
  EXPECT_EQ(breachOf(document, schemaOf(each.schema), ""), "");
  EXPECT_EQ(run.out.find("\"schema\""), run.out.find('"'));
}

INSTANTIATE_TEST_SUITE_P(Json, SchemaTest, testing::ValuesIn(kCases),
                         [](const auto& each) { return std::string(each.param.name); });

void PrintTo(const SchemaCase& each, std::ostream* out) { *out << each.arguments; }

TEST(Schema, TellsADocumentThatBreaksIt) {
  const Json schema = schemaOf("version");
  EXPECT_EQ(breachOf(Json::parse(R"({"schema":"vesk.version/1","version":"1"})"), schema, ""), "");
  EXPECT_NE(breachOf(Json::parse(R"({"schema":"vesk.version/2","version":"1"})"), schema, ""), "");
  EXPECT_NE(breachOf(Json::parse(R"({"schema":"vesk.version/1"})"), schema, ""), "");
  EXPECT_NE(breachOf(Json::parse(R"({"schema":"vesk.version/1","version":1})"), schema, ""), "");
  EXPECT_NE(breachOf(Json::parse(R"({"schema":"vesk.version/1","version":"1","x":1})"), schema, ""),
            "");
}

}  // namespace
}  // namespace VeskTest
