// SPDX-License-Identifier: MIT
#include "clash/Bcf.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <string_view>
#include <unordered_map>

#include "clash/ClashReports.h"
#include "files/Zip.h"
#include "terminal/Exit.h"
#include "terminal/Terminal.h"
#include "text/Json.h"
#include "text/Numbers.h"

namespace VeskTool {
namespace {

constexpr std::string_view kProlog = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
constexpr double kMetre = 0.001;
constexpr double kViewDistance = 4.0;  // metres

// Text between tags or quotes; what XML can't hold is U+FFFD.
std::string escaped(std::string_view text) {
  std::string xml;
  for (const char c : validUtf8(text)) {
    switch (c) {
      case '&':
        xml += "&amp;";
        break;
      case '<':
        xml += "&lt;";
        break;
      case '>':
        xml += "&gt;";
        break;
      case '"':
        xml += "&quot;";
        break;
      default:
        if (static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\n') {
          xml += "\xef\xbf\xbd";
        } else {
          xml += c;
        }
    }
  }
  return xml;
}

std::string tagged(std::string_view tag, std::string_view text) {
  std::string xml = "<";
  return xml.append(tag).append(">").append(text).append("</").append(tag).append(">\n");
}

std::uint64_t hashOf(std::string_view text, std::uint64_t seed) {
  std::uint64_t hash = seed;
  for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3U;
  hash = (hash ^ (hash >> 33U)) * 0xff51afd7ed558ccdU;
  hash = (hash ^ (hash >> 33U)) * 0xc4ceb9fe1a85ec53U;
  return hash ^ (hash >> 33U);
}

// A UUID of version 8, whose bits are its maker's own.
std::string guidOf(std::string_view content) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  const std::array<std::uint64_t, 2> halves = {hashOf(content, 0xcbf29ce484222325U),
                                               hashOf(content, 0x84222325cbf29ce4U)};
  std::string guid;
  for (unsigned i = 0; i < 32; ++i) {
    if (i == 8 || i == 12 || i == 16 || i == 20) guid += '-';
    unsigned digit = static_cast<unsigned>(halves[i / 16] >> (60U - 4U * (i % 16U))) & 0xfU;
    if (i == 12) digit = 8;
    if (i == 16) digit = 8U | (digit & 3U);
    guid += kDigits[digit];
  }
  return guid;
}

std::string contentOf(const Clash& clash, const ClashModel& model) {
  std::string content(codeOf(clash.kind));
  for (const std::uint32_t index : {clash.a, clash.b}) {
    const ClashElement& element = model.elements()[index];
    content.append("\n").append(model.headers()[element.header].text);
    content.append("\n").append(std::to_string(element.counter));
    content.append("\n").append(nameOf(element.kind));
  }
  return content;
}

std::string creationDate() {
  std::int64_t seconds = 946684800;  // 2000-01-01
  const char* epoch = std::getenv("SOURCE_DATE_EPOCH");
  if (epoch != nullptr) {
    const std::string_view text(epoch);
    std::int64_t given = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), given);
    constexpr std::int64_t kLast = 253402300799;  // of the year 9999
    if (error == std::errc() && end == text.data() + text.size() && given >= 0 && given <= kLast) {
      seconds = given;
    }
  }
  const std::chrono::sys_seconds time{std::chrono::seconds(seconds)};
  const auto day = std::chrono::floor<std::chrono::days>(time);
  const std::chrono::year_month_day date(day);
  const std::chrono::hh_mm_ss clock(time - day);
  const auto two = [](auto number) {
    const std::string text = std::to_string(number);
    return text.size() < 2 ? '0' + text : text;
  };
  std::string year = std::to_string(static_cast<int>(date.year()));
  return year + '-' + two(static_cast<unsigned>(date.month())) + '-' +
         two(static_cast<unsigned>(date.day())) + 'T' + two(clock.hours().count()) + ':' +
         two(clock.minutes().count()) + ':' + two(clock.seconds().count()) + 'Z';
}

std::string markupOf(const Finding& finding, const ClashModel& model, const std::string& guid,
                     const std::string& date) {
  std::string xml(kProlog);
  xml += "<Markup>\n<Header>\n";
  for (const std::string& file : model.files()) {
    xml += "<File isExternal=\"true\">\n" + tagged("Filename", escaped(file)) + "</File>\n";
  }
  xml += "</Header>\n<Topic Guid=\"" + guid + "\" TopicType=\"Clash\" TopicStatus=\"Open\">\n";
  xml += tagged("Title", escaped(finding.message));
  xml += tagged("Priority", finding.severity == Severity::kError ? "High" : "Normal");
  xml += "<Labels>" + std::string(finding.code) + "</Labels>\n";
  xml += tagged("CreationDate", date);
  xml += tagged("CreationAuthor", "vesk");
  xml += tagged("Description", escaped(finding.file + ':' + std::to_string(finding.line) + ": " +
                                       finding.message));
  xml += "</Topic>\n<Viewpoints Guid=\"" + guidOf("view\n" + guid) + "\">\n";
  return xml + tagged("Viewpoint", "viewpoint.bcfv") + "</Viewpoints>\n</Markup>\n";
}

std::string point(std::string_view tag, double x, double y, double z) {
  return tagged(tag,
                tagged("X", shortest(x)) + tagged("Y", shortest(y)) + tagged("Z", shortest(z)));
}

// Both elements, by the GlobalIds that they have in an export to IFC.
std::string componentsOf(const Clash& clash, const ClashModel& model) {
  std::string xml = "<Components>\n<Selection>\n";
  for (const std::uint32_t index : {clash.a, clash.b}) {
    xml += "<Component IfcGuid=\"" + model.globalIds()[index] + "\"/>\n";
  }
  return xml + "</Selection>\n<Visibility DefaultVisibility=\"true\"/>\n</Components>\n";
}

// From the south-west above, as plants are shown.
std::string viewpointOf(const Clash& clash, const ClashModel& model, const std::string& guid) {
  const double part = std::sqrt(1.0 / 3.0);
  const double off = kViewDistance * part;
  const GePoint& p = clash.place;
  std::string xml(kProlog);
  xml += "<VisualizationInfo Guid=\"" + guidOf("view\n" + guid) + "\">\n" +
         componentsOf(clash, model) + "<PerspectiveCamera>\n";
  xml += point("CameraViewPoint", p.x * kMetre - off, p.y * kMetre - off, p.z * kMetre + off);
  xml += point("CameraDirection", part, part, -part);
  xml += point("CameraUpVector", part * std::sqrt(0.5), part * std::sqrt(0.5),
               2.0 * part * std::sqrt(0.5));
  return xml + tagged("FieldOfView", "60") + "</PerspectiveCamera>\n</VisualizationInfo>\n";
}

}  // namespace

std::string bcfOf(std::span<const Clash> clashes, const ClashModel& model,
                  const ClashSearch& search) {
  if (clashes.size() > kMostTopics) {
    throw Failure(
        Exit::kUsage,
        "--bcf: " + grouped(clashes.size()) + " findings, and a file takes " + grouped(kMostTopics),
        "clashes of fewer files, or --ignore what may clash");
  }
  const std::string date = creationDate();
  std::unordered_map<std::string, int> seen;
  Zip zip;
  zip.add("bcf.version", std::string(kProlog) + "<Version VersionId=\"2.1\">\n" +
                             tagged("DetailedVersion", "2.1") + "</Version>\n");
  for (const Clash& clash : clashes) {
    checkInterrupt();
    std::string content = contentOf(clash, model);
    const int before = seen[content]++;
    if (before > 0) content += '\n' + std::to_string(before);
    const std::string guid = guidOf(content);
    zip.add(guid + "/markup.bcf", markupOf(findingOf(clash, model, search), model, guid, date));
    zip.add(guid + "/viewpoint.bcfv", viewpointOf(clash, model, guid));
  }
  return zip.finish();
}

}  // namespace VeskTool
