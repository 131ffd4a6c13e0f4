#include "view/PageModel.h"

#include "Kinds.h"

namespace VeskTool {
namespace {

// Vectors of these names lead nowhere.
bool isDirection(const std::string& name) {
  return name == "direction" || name == "up" || name.starts_with("normal");
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
      return isDirection(property.name) ? 'd' : 'p';
    case Property::Type::kVector:
      break;
  }
  return isDirection(property.name) ? 'd' : 'o';
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
  for (const std::string& each : lines) records_ += each + '\n';

  ValueLayout layout;
  for (Property& property : propertiesOf(geo)) {
    const char type = typeOf(property);
    if (type == 't') {
      values_.push_back(static_cast<double>(strings_.size()));
      strings_.push_back(std::move(property.text));
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

std::vector<const ValueLayout*> PageModel::layouts() const {
  std::vector<const ValueLayout*> byId(layouts_.size());
  for (const auto& [layout, id] : layouts_) byId[id] = &layout;
  return byId;
}

}  // namespace VeskTool
