#ifndef VESK_TESTS_SUPPORT_JSONSCHEMA_H
#define VESK_TESTS_SUPPORT_JSONSCHEMA_H

#include <algorithm>
#include <cstddef>
#include <nlohmann/json.hpp>
#include <regex>
#include <string>

// Where and how the value does not fit the schema; empty if it does. Knows the
// words of JSON Schema that the schemas of docs/schema use, and fails for others.
//
//   {"a": [1]} beside {"properties": {"a": {"items": {"type": "string"}}}}
//   -> "/a/0: no \"string\""
inline std::string schemaFault(const nlohmann::json& value, const nlohmann::json& schema,
                               const std::string& place = "") {
  const auto isOf = [&](const nlohmann::json& type) {
    return (type == "object" && value.is_object()) || (type == "array" && value.is_array()) ||
           (type == "string" && value.is_string()) || (type == "boolean" && value.is_boolean()) ||
           (type == "number" && value.is_number()) ||
           (type == "integer" && value.is_number_integer()) || (type == "null" && value.is_null());
  };
  for (const auto& [word, rule] : schema.items()) {
    if (word == "$schema" || word == "title" || word == "description") continue;
    if (word == "type") {
      const bool isOne = rule.is_array() ? std::any_of(rule.begin(), rule.end(), isOf) : isOf(rule);
      if (!isOne) return place + ": no " + rule.dump();
    } else if (word == "const") {
      if (value != rule) return place + ": not " + rule.dump();
    } else if (word == "enum") {
      if (std::find(rule.begin(), rule.end(), value) == rule.end()) {
        return place + ": not one of " + rule.dump();
      }
    } else if (word == "minimum") {
      if (value.is_number() && value < rule) return place + ": below " + rule.dump();
    } else if (word == "minItems") {
      if (value.is_array() && value.size() < rule.get<std::size_t>())
        return place + ": fewer than " + rule.dump();
    } else if (word == "maxItems") {
      if (value.is_array() && value.size() > rule.get<std::size_t>())
        return place + ": more than " + rule.dump();
    } else if (word == "pattern") {
      if (value.is_string() &&
          !std::regex_search(value.get<std::string>(), std::regex(rule.get<std::string>()))) {
        return place + ": does not match " + rule.dump();
      }
    } else if (word == "required") {
      if (!value.is_object()) continue;
      for (const nlohmann::json& name : rule) {
        if (!value.contains(name.get<std::string>())) return place + ": without " + name.dump();
      }
    } else if (word == "properties") {
      if (!value.is_object()) continue;
      for (const auto& [name, each] : rule.items()) {
        if (!value.contains(name)) continue;
        const std::string fault = schemaFault(value[name], each, place + '/' + name);
        if (!fault.empty()) return fault;
      }
    } else if (word == "additionalProperties") {
      if (!value.is_object()) continue;
      for (const auto& [name, each] : value.items()) {
        if (schema.contains("properties") && schema["properties"].contains(name)) continue;
        if (rule == false) return place + ": unknown \"" + name + '"';
        const std::string fault = schemaFault(each, rule, place + '/' + name);
        if (!fault.empty()) return fault;
      }
    } else if (word == "items") {
      if (!value.is_array()) continue;
      for (std::size_t i = 0; i < value.size(); ++i) {
        const std::string fault = schemaFault(value[i], rule, place + '/' + std::to_string(i));
        if (!fault.empty()) return fault;
      }
    } else {
      return place + ": schema with the unknown word \"" + word + '"';
    }
  }
  return "";
}

#endif
