// SPDX-License-Identifier: MIT
#ifndef VESK_TESTS_SUPPORT_JSONSCHEMA_H
#define VESK_TESTS_SUPPORT_JSONSCHEMA_H

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>

// Where and how the value does not fit the schema, by Debian's python3-jsonschema;
// empty if it does. Not for Windows.
inline std::string schemaFault(const nlohmann::json& value, const nlohmann::json& schema) {
  const std::filesystem::path name = "schema-and-value.json";
  std::ofstream(name) << nlohmann::json::array({schema, value}).dump();
  const char* const judge =
      "/usr/bin/python3 -c 'import json, jsonschema\n"
      "schema, value = json.load(open(\"schema-and-value.json\"))\n"
      "jsonschema.Draft202012Validator.check_schema(schema)\n"
      "for e in jsonschema.Draft202012Validator(schema).iter_errors(value):\n"
      "    print(e.json_path + \": \" + e.message)' 2>&1";
  std::string fault;
  std::FILE* const pipe = popen(judge, "r");
  if (pipe == nullptr) return "no pipe";
  std::array<char, 1024> block;
  for (std::size_t n = 0; (n = std::fread(block.data(), 1, block.size(), pipe)) != 0;) {
    fault.append(block.data(), n);
  }
  const bool passed = pclose(pipe) == 0;
  std::filesystem::remove(name);
  return passed || !fault.empty() ? fault : "the validator failed";
}

#endif
