// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <random>

#include "pcf/PcfRun.h"

// Plants are made at random, written as other programs write them, and each component's
// records are compared with what was meant: nothing here reads the file.
namespace {

using Vec = std::array<double, 3>;

Vec operator+(const Vec& a, const Vec& b) { return {a[0] + b[0], a[1] + b[1], a[2] + b[2]}; }
Vec operator-(const Vec& a, const Vec& b) { return {a[0] - b[0], a[1] - b[1], a[2] - b[2]}; }
Vec operator*(const Vec& a, double s) { return {a[0] * s, a[1] * s, a[2] * s}; }
double dot(const Vec& a, const Vec& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }
double distance(const Vec& a, const Vec& b) { return std::sqrt(dot(a - b, a - b)); }
Vec cross(const Vec& a, const Vec& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
Vec unit(const Vec& a) { return a * (1 / std::sqrt(dot(a, a))); }

// Sizes as they are called and as wide as they are, ASME B36.10 and B16.5 class 150.
struct Size {
  double inches;
  double dn;
  double outside;
  double flange;
};
constexpr Size kSizes[] = {{2, 50, 60.3, 150},    {3, 80, 88.9, 190},   {4, 100, 114.3, 230},
                           {6, 150, 168.3, 280},  {8, 200, 219.1, 345}, {10, 250, 273, 405},
                           {12, 300, 323.8, 485}, {1.5, 40, 48.3, 125}, {1, 25, 33.4, 110}};

// What a body must do: end here, this wide.
struct Mouth {
  Vec at;
  double outside;
};

struct Leg {
  Vec from;
  Vec to;
};

struct Meant {
  std::string text;  // the lines below the word, ends in their order
  std::string word;
  std::vector<Leg> lines;     // its centre line
  std::vector<Mouth> mouths;  // widths at its ends
  bool isBend = false;
  double bendRadius = 0;
};

// How an exporter writes.
struct Style {
  enum Bores { kNps, kDn, kInchesInMillimetres, kOutside, kFractions } bores = kNps;
  bool marksFaces = false;
  bool marksWelds = false;
  bool swapsEnds = false;
  bool listsGaskets = true;
  bool listsWelds = true;
  bool valvesAreWelded = false;
  std::string indent = "    ";
  std::string lineEnd = "\n";
  bool isShuffled = false;
};

class Plant {
 public:
  Plant(unsigned seed, const Style& style) : random_(seed), style_(style) {
    at_ = {number(-1e5, 1e5), number(-1e5, 1e5), number(-1e4, 1e4)};
    along_ = {1, 0, 0};
    // Some plants stand skew.
    if (seed % 3 == 0) along_ = unit({number(-1, 1), number(-1, 1), number(-1, 1)});
    across_ = unit(cross(along_, {0.3, 0.9, 0.2}));
    size_ = kSizes[3];
  }

  void grow(int count) {
    pipe();
    for (int i = 0; i < count; ++i) {
      switch (random_() % 9) {
        case 0:
        case 1:
          bend(90);
          break;
        case 2:
          bend(45);
          break;
        case 3:
          tee();
          break;
        case 4:
          reducer(false);
          break;
        case 5:
          reducer(true);
          break;
        case 6:
          olet();
          break;
        case 7:
          valve();
          break;
        default:
          pair();
      }
      pipe();
    }
    end();
    if (style_.isShuffled) std::shuffle(meant_.begin(), meant_.end(), random_);
  }

  std::string file() const {
    std::string text = "ISOGEN-FILES ISOGEN.FLS\nUNITS-BORE ";
    text += style_.bores == Style::kNps || style_.bores == Style::kFractions ? "INCH" : "MM";
    text += "\nUNITS-CO-ORDS MM\nPIPELINE-REFERENCE P-1\n";
    for (const Meant& meant : meant_) text += meant.word + '\n' + meant.text;
    std::string result;
    for (const char c : text) {
      if (c == '\n') {
        result += style_.lineEnd;
      } else if (c == '\t') {
        result += style_.indent;
      } else {
        result += c;
      }
    }
    return result;
  }

  const std::vector<Meant>& meant() const { return meant_; }

 private:
  double number(double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(random_);
  }

  std::string bore(const Size& size) const {
    char text[40];
    switch (style_.bores) {
      case Style::kNps:
        std::snprintf(text, sizeof text, "%g", size.inches);
        break;
      case Style::kFractions:
        return size.inches == 1.5 ? "1.1/2" : std::to_string(static_cast<int>(size.inches)) + '"';
      case Style::kDn:
        std::snprintf(text, sizeof text, "%g", size.dn);
        break;
      case Style::kInchesInMillimetres:
        std::snprintf(text, sizeof text, "%.1f", size.inches * 25.4);
        break;
      case Style::kOutside:
        std::snprintf(text, sizeof text, "%g", size.outside);
        break;
    }
    return text;
  }

  static std::string point(const std::string& key, const Vec& at, const std::string& rest) {
    char text[200];
    std::snprintf(text, sizeof text, "\t%s %.4f %.4f %.4f %s\n", key.c_str(), at[0], at[1], at[2],
                  rest.c_str());
    return text;
  }

  std::string end(const Vec& at, const Size& size, const char* code) const {
    const bool isTold = *code == 'F' ? style_.marksFaces : style_.marksWelds;
    return point("END-POINT", at, bore(size) + (isTold ? std::string(" ") + code : ""));
  }

  // Two ends in either order.
  std::string ends(const std::string& first, const std::string& second) {
    return style_.swapsEnds && random_() % 2 == 0 ? second + first : first + second;
  }

  Meant& add(const char* word, std::string text) {
    Meant meant;
    meant.word = word;
    meant.text = std::move(text);
    meant_.push_back(meant);
    return meant_.back();
  }

  void weld() {
    if (!style_.listsWelds) return;
    add("WELD", random_() % 2 == 0 ? point("CO-ORDS", at_, "")
                                   : point("END-POINT", at_, "") + point("END-POINT", at_, ""));
  }

  // A straight component from here on.
  Meant& straight(const char* word, double length, const char* code1 = "BW",
                  const char* code2 = "BW") {
    const Vec to = at_ + along_ * length;
    Meant& meant = add(word, ends(end(at_, size_, code1), end(to, size_, code2)));
    meant.lines = {{at_, to}};
    meant.mouths = {{at_, size_.outside}, {to, size_.outside}};
    at_ = to;
    return meant;
  }

  void pipe() { straight("PIPE", number(300, 3000)); }

  void bend(double degrees) {
    weld();
    const double turn = degrees * std::acos(-1.0) / 180;
    const double radius = size_.inches * 25.4 * 1.5;
    const double leg = radius * std::tan(turn / 2);
    const Vec corner = at_ + along_ * leg;
    const double roll = number(0, 6.28);
    const Vec side = unit(across_ * std::cos(roll) + cross(along_, across_) * std::sin(roll));
    const Vec onward = along_ * std::cos(turn) + side * std::sin(turn);
    const Vec to = corner + onward * leg;
    Meant& meant = add("ELBOW", ends(end(at_, size_, "BW"), end(to, size_, "BW")) +
                                    point("CENTRE-POINT", corner, random_() % 2 == 0 ? "0" : ""));
    meant.lines = {{at_, corner}, {corner, to}};
    meant.mouths = {{at_, size_.outside}, {to, size_.outside}};
    meant.isBend = true;
    meant.bendRadius = radius;
    at_ = to;
    across_ = unit(cross(onward, unit(cross(along_, side))));
    along_ = onward;
    weld();
  }

  const Size& smaller() { return kSizes[size_.inches <= 2 ? 7 : random_() % 2 == 0 ? 0 : 7]; }

  void branchLine(const Vec& from, const Vec& way, const Size& size) {
    const Vec to = from + way * number(200, 900);
    Meant& meant = add("PIPE", ends(end(from, size, "BW"), end(to, size, "BW")));
    meant.lines = {{from, to}};
    meant.mouths = {{from, size.outside}, {to, size.outside}};
  }

  void tee() {
    const Size small = smaller();
    const double half = size_.outside;
    const Vec from = at_;
    const Vec centre = at_ + along_ * half;
    const Vec to = at_ + along_ * (2 * half);
    const Vec tip = centre + across_ * (size_.outside + 20);
    Meant& meant = add("TEE", ends(end(from, size_, "BW"), end(to, size_, "BW")) +
                                  point("CENTRE-POINT", centre, "") +
                                  point("BRANCH1-POINT", tip, bore(small)));
    meant.lines = {{from, to}, {centre, tip}};
    meant.mouths = {{from, size_.outside}, {to, size_.outside}, {tip, small.outside}};
    branchLine(tip, across_, small);
    at_ = to;
  }

  void olet() {
    if (size_.inches < 2) return;
    const Size small = kSizes[8];
    const Vec foot = at_ + along_ * 500;
    pipe();
    const Vec tip = foot + across_ * (size_.outside / 2 + 40);
    Meant& meant =
        add("OLET", point("CENTRE-POINT", foot, "") + point("BRANCH1-POINT", tip, bore(small)));
    meant.lines = {{foot, tip}};
    meant.mouths = {{tip, small.outside}};
    branchLine(tip, across_, small);
  }

  void reducer(bool isEccentric) {
    const Size before = size_;
    Size after = kSizes[random_() % 7];
    if (after.inches == before.inches) after = before.inches == 4 ? kSizes[3] : kSizes[2];
    const Vec from = at_;
    const double offset = isEccentric ? (before.outside - after.outside) / 2 : 0;
    const Vec to = at_ + along_ * 180 + across_ * offset;
    Meant& meant = add(isEccentric ? "REDUCER-ECCENTRIC" : "REDUCER-CONCENTRIC",
                       ends(end(from, before, "BW"), end(to, after, "BW")));
    meant.lines = {{from, to}};
    meant.mouths = {{from, before.outside}, {to, after.outside}};
    at_ = to;
    size_ = after;
  }

  // Its face at its end or at its beginning.
  void flange(bool facesOnward) {
    const double length = size_.outside / 2 + 20;
    Meant& meant = straight("FLANGE", length, facesOnward ? "BW" : "FL", facesOnward ? "FL" : "BW");
    meant.mouths[facesOnward ? 1 : 0].outside = size_.flange;
    if (random_() % 2 == 0) meant.text += "\tSKEY FLWN\n";
  }

  void gasket() {
    if (!style_.listsGaskets) {
      at_ = at_ + along_ * 3;
      return;
    }
    Meant& meant = straight("GASKET", 3, "", "");
    meant.mouths.clear();
  }

  void pair() {
    weld();
    flange(true);
    gasket();
    flange(false);
    weld();
  }

  void valve() {
    flange(true);
    gasket();
    Meant& meant = straight("VALVE", 2.5 * size_.outside, "", "");
    meant.lines = {};
    meant.mouths.clear();
    meant.text += style_.valvesAreWelded ? "\tSKEY VVBW\n"
                  : random_() % 2 == 0   ? "\tSKEY VTFL\n"
                                         : "";
    gasket();
    flange(false);
  }

  void end() {
    const Vec to = at_ + along_ * (size_.outside / 2);
    Meant& meant = add("CAP", random_() % 2 == 0 ? end(at_, size_, "BW")
                                                 : ends(end(at_, size_, "BW"), end(to, size_, "")));
    meant.lines = {{at_, to}};
    meant.mouths = {{at_, size_.outside}};
  }

  std::mt19937 random_;
  Style style_;
  Vec at_;
  Vec along_;
  Vec across_;
  Size size_;
  std::vector<Meant> meant_;
};

// The records of one component.
struct Found {
  std::vector<Leg> lines;
  std::vector<Mouth> mouths;  // of cylinders, cones and bends
  double bendRadius = 0;
  int bends = 0;
};

Found foundOf(const std::vector<std::string>& records) {
  Found found;
  for (const std::string& record : records) {
    const std::vector<double> n = numbersOf(record);
    const Vec at = n.size() >= 3 ? Vec{n[0], n[1], n[2]} : Vec{};
    const Vec way = n.size() >= 6 ? Vec{n[3], n[4], n[5]} : Vec{};
    if (record[0] == 'l' && n.size() == 6) found.lines.push_back({at, at + way});
    if (record[0] == 'c') {
      found.mouths.push_back({at, n[6]});
      found.mouths.push_back({at + way, n[6]});
    }
    if (record[0] == 'n') {
      found.mouths.push_back({at, n[6]});
      found.mouths.push_back({at + way, n[7]});
    }
    if (record[0] == 't') {
      found.mouths.push_back({at + way, n[9]});
      found.mouths.push_back({at + Vec{n[6], n[7], n[8]}, n[9]});
      found.bendRadius = std::sqrt(dot(way, way));
      ++found.bends;
    }
    if (record[0] != 'r') continue;
    // A slice of a round body: the first and the fifth corner lie on its axis, the others
    // on its circles.
    const Vec other = at + Vec{n[12], n[13], n[14]};
    found.mouths.push_back({at, 2 * distance(way, {})});
    found.mouths.push_back({other, 2 * distance(at + Vec{n[15], n[16], n[17]}, other)});
  }
  return found;
}

bool isSame(const Leg& a, const Leg& b) {
  constexpr double kNear = 0.01;
  return (distance(a.from, b.from) < kNear && distance(a.to, b.to) < kNear) ||
         (distance(a.from, b.to) < kNear && distance(a.to, b.from) < kNear);
}

// The widest body that ends there.
double widthAt(const Found& found, const Vec& at) {
  double width = 0;
  for (const Mouth& mouth : found.mouths) {
    if (distance(mouth.at, at) < 0.01) width = std::max(width, mouth.outside);
  }
  return width;
}

void expectMeant(const Meant& meant, const Found& found) {
  EXPECT_TRUE(meant.lines.empty() || found.lines.size() == meant.lines.size());
  for (const Leg& line : meant.lines) {
    EXPECT_TRUE(std::any_of(found.lines.begin(), found.lines.end(),
                            [&](const Leg& other) { return isSame(line, other); }));
  }
  for (const Mouth& mouth : meant.mouths)
    EXPECT_NEAR(widthAt(found, mouth.at), mouth.outside, 0.01);
  if (!meant.isBend) return;
  EXPECT_EQ(found.bends, 1);
  EXPECT_NEAR(found.bendRadius, meant.bendRadius, 0.01);
}

void expectPlant(unsigned seed, const Style& style) {
  Plant plant(seed, style);
  plant.grow(40);
  const PcfRun run = runPcf(plant.file());
  EXPECT_EQ(run.errors + run.warnings, 0U) << run.messageText();
  EXPECT_EQ(run.notDrawn + run.inPart, 0U);
  ASSERT_EQ(run.components, plant.meant().size());
  std::size_t at = 0;
  for (std::size_t i = 0; i < plant.meant().size(); ++i) {
    std::vector<std::string> records;
    const std::string header = at < run.headers.size() ? run.headers[at] : "";
    const bool isDrawn = std::any_of(run.rows.begin(), run.rows.end(), [&](const auto& row) {
      return row.first == static_cast<int>(i + 1);
    });
    while (isDrawn && at < run.headers.size() && run.headers[at] == header)
      records.push_back(run.records[at++]);
    if (plant.meant()[i].word == "WELD" || plant.meant()[i].word == "CAP") continue;
    SCOPED_TRACE("component " + std::to_string(i) + ' ' + plant.meant()[i].word + '\n' +
                 plant.meant()[i].text + run.messageText());
    expectMeant(plant.meant()[i], foundOf(records));
    if (testing::Test::HasFailure()) return;
  }
}

TEST(Plants, AreDrawnAsTheyWereMeant) {
  constexpr Style::Bores kBores[] = {Style::kNps, Style::kDn, Style::kInchesInMillimetres,
                                     Style::kOutside, Style::kFractions};
  for (unsigned seed = 0; seed < 200; ++seed) {
    Style style;
    style.bores = kBores[seed % 5];
    style.marksFaces = seed % 7 == 0;
    style.marksWelds = seed % 4 == 0;
    style.swapsEnds = seed % 2 == 0;
    style.listsGaskets = seed % 5 != 3;
    style.listsWelds = seed % 3 != 1;
    style.valvesAreWelded = seed % 6 == 1;
    style.isShuffled = seed % 11 == 5;
    style.indent = seed % 8 == 3 ? "" : seed % 8 == 4 ? "\t" : "    ";
    style.lineEnd = seed % 9 == 2 ? "\r\n" : "\n";
    SCOPED_TRACE("seed " + std::to_string(seed));
    expectPlant(seed, style);
    if (testing::Test::HasFailure()) return;
  }
}

}  // namespace
