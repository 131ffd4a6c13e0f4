// SPDX-License-Identifier: MIT
#include "view/PageModel.h"

#include <algorithm>

#include "elements/Kinds.h"
#include "files/FileNames.h"
#include "terminal/Terminal.h"

namespace VeskTool {
namespace {

// Vectors that lead nowhere.
bool isDirection(Vesk::Value id) {
  return id == Vesk::Value::kDirection || id == Vesk::Value::kPointDirection ||
         id == Vesk::Value::kUp || id == Vesk::Value::kNormal;
}

char typeOf(const Property& property) {
  switch (property.type) {
    case Property::Type::kNumber:
      return 'n';
    case Property::Type::kInteger:
      return 'i';
    case Property::Type::kText:
      return 't';
    case Property::Type::kPoint:
      return isDirection(property.id) ? 'd' : 'p';
    case Property::Type::kVector:
      break;
  }
  return isDirection(property.id) ? 'd' : 'o';
}

}  // namespace

std::uint32_t PageModel::add(const Vesk::Geo& geo, std::string_view header, int counter,
                             std::uint32_t file, std::uint64_t line, const Vesk::Recs& lines) {
  Vesk::SceneElement element;
  element.kind = static_cast<std::uint8_t>(kindOf(geo));
  element.header = builder_.headerId(header);
  element.file = file;
  element.line = line;
  element.lines = static_cast<std::uint32_t>(lines.size());
  counters_.push_back(static_cast<std::uint32_t>(counter));
  recordStarts_.push_back(records_.size());
  shown_.push_back(Shown::kWhole);
  groupIds_.push_back(0);
  rows_.push_back(0);
  if (groups_.empty()) groups_.emplace_back();
  for (const std::string& each : lines) records_ += each + '\n';

  ValueLayout layout;
  for (Property& property : propertiesOf(geo)) {
    const char type = typeOf(property);
    if (type == 't') {
      const auto next = static_cast<std::uint32_t>(strings_.size());
      const auto [id, isNew] = stringIds_.try_emplace(property.text, next);
      if (isNew) strings_.push_back(std::move(property.text));
      values_.push_back(id->second);
    } else {
      values_.push_back(property.value.x);
      if (type != 'n' && type != 'i') {
        values_.insert(values_.end(), {property.value.y, property.value.z});
      }
    }
    layout.emplace_back(std::move(property.name), type);
  }
  const auto id = static_cast<std::uint32_t>(layouts_.size());
  layoutIds_.push_back(layouts_.try_emplace(std::move(layout), id).first->second);
  return builder_.add(geo, element);
}

void PageModel::setGroup(std::uint32_t element, const std::string& group) {
  // There are few, and mostly it is that of the element before.
  std::uint32_t id = element > 0 ? groupIds_[element - 1] : 0;
  if (groups_[id] != group) {
    const auto found = std::find(groups_.begin(), groups_.end(), group);
    id = static_cast<std::uint32_t>(found - groups_.begin());
    if (found == groups_.end()) groups_.push_back(group);
  }
  groupIds_[element] = id;
}

void PageModel::setAttributes(std::uint32_t element, const std::string& key,
                              const std::vector<std::string>& columns,
                              const std::vector<std::string>& values) {
  const auto next = static_cast<std::uint32_t>(rowIds_.size() + 1);
  const auto [row, isNew] = rowIds_.try_emplace(key, next);
  rows_[element] = row->second;
  if (!isNew) return;
  for (std::vector<std::uint32_t>& column : attributeColumns_) column.push_back(0);
  for (std::size_t i = 0; i < columns.size() && i < values.size(); ++i) {
    const auto found = std::find(attributeNames_.begin(), attributeNames_.end(), columns[i]);
    const auto place = static_cast<std::size_t>(found - attributeNames_.begin());
    if (found == attributeNames_.end()) {
      attributeNames_.push_back(columns[i]);
      attributeColumns_.emplace_back(next, 0U);
    }
    const auto id = static_cast<std::uint32_t>(attributeTexts_.size());
    const auto [text, isNewText] = attributeIds_.try_emplace(values[i], id);
    if (isNewText) attributeTexts_.push_back(values[i]);
    attributeColumns_[place].back() = text->second;
  }
}

std::vector<std::string> PageModel::fileNames() const { return handedOnNames(scene_.files); }

std::vector<std::uint32_t> PageModel::components() const {
  std::vector<std::uint32_t> components;
  std::unordered_map<std::uint32_t, std::uint32_t> ofRows;
  std::uint32_t next = 0;
  const std::vector<Vesk::SceneElement>& elements = scene_.elements;
  for (std::size_t i = 0; i < elements.size(); ++i) {
    if (rows_[i] != 0) {
      const auto [component, isNew] = ofRows.try_emplace(rows_[i], next);
      if (isNew) ++next;
      components.push_back(component->second);
      continue;
    }
    const bool goesOn = i > 0 && rows_[i - 1] == 0 && elements[i].file == elements[i - 1].file &&
                        elements[i].header == elements[i - 1].header &&
                        counters_[i] == counters_[i - 1];
    components.push_back(goesOn ? components.back() : next++);
  }
  return components;
}

std::vector<const ValueLayout*> PageModel::layouts() const {
  std::vector<const ValueLayout*> byId(layouts_.size());
  for (const auto& [layout, id] : layouts_) byId[id] = &layout;
  return byId;
}

}  // namespace VeskTool
