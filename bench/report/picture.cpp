#include "report/picture.h"

#include <algorithm>
#include <array>
#include <iomanip>
#include <iterator>
#include <sstream>

namespace vantrex::bench {

namespace {

constexpr int kWidth = 760;
constexpr int kLeft = 80;
constexpr int kTop = 62;
constexpr int kBarHeight = 13;
constexpr int kGroupHeight = kBarHeight * static_cast<int>(std::size(kColumns)) + 14;
constexpr int kLongestBar = 520;

constexpr std::array<std::string_view, 4> kColours = {"#1d9a6c", "#5f86cf", "#ab78bd", "#c98f3d"};

struct Stage {
  std::string_view name;
  double opacity;
};
constexpr std::array<Stage, 4> kStages = {{{"build", 1}, {"finish", 0.72}, {"write", 0.5}, {"destroy", 0.3}}};

void text(std::ostream& out, double x, int y, std::string_view content, std::string_view anchor = "start") {
  out << "<text x=\"" << x << "\" y=\"" << y << "\" text-anchor=\"" << anchor << "\">" << content
      << "</text>\n";
}

void box(std::ostream& out, double x, int y, double width, std::string_view colour, double opacity = 1) {
  out << "<rect x=\"" << x << "\" y=\"" << y << "\" width=\"" << width << "\" height=\"" << kBarHeight - 2
      << "\" fill=\"" << colour << "\" fill-opacity=\"" << opacity << "\"/>\n";
}

void draw_legend(std::ostream& out) {
  for (std::size_t at = 0; at < kColours.size(); ++at) {
    const int x = kLeft + 95 * static_cast<int>(at);
    box(out, x, 30, 11, kColours[at]);
    text(out, x + 16, 40, kColumns[at]);
  }
  for (std::size_t at = 0; at < kStages.size(); ++at) {
    const int x = kLeft + 400 + 68 * static_cast<int>(at);
    box(out, x, 30, 11, "#808080", kStages[at].opacity);
    text(out, x + 16, 40, kStages[at].name);
  }
}

// A bar as long as the life, divided as the stages are when measured apart.
void draw_bar(std::ostream& out, const Results& results, const Row& life, std::size_t column, int y,
              double longest) {
  const std::string_view contender = kColumns[column];
  const double time = results.at("life", life.name, contender).nanoseconds;
  double sum = 0;
  for (const Stage& stage : kStages) sum += results.at(stage.name, life.name, contender).nanoseconds;
  double x = kLeft;
  for (const Stage& stage : kStages) {
    const double share = results.at(stage.name, life.name, contender).nanoseconds / sum;
    const double width = kLongestBar * time / longest * share;
    box(out, x, y, width, kColours[column], stage.opacity);
    x += width;
  }
  std::ostringstream label;
  label << time_text(time);
  if (column > 0) {
    label << std::fixed << std::setprecision(2) << ", "
          << time / results.at("life", life.name, kOurs).nanoseconds << " ×";
  }
  text(out, x + 6, y + kBarHeight - 3, label.str());
}

void draw_life(std::ostream& out, const Results& results, const Row& life, int y) {
  double longest = 0;
  for (const auto& [contender, cell] : life.cells) longest = std::max(longest, cell.nanoseconds);
  text(out, kLeft - 10, y + 2 * kBarHeight + 3, life.name, "end");
  for (std::size_t column = 0; column < kColours.size(); ++column, y += kBarHeight)
    draw_bar(out, results, life, column, y, longest);
}

}  // namespace

std::string time_text(double nanoseconds) {
  constexpr std::array<std::string_view, 4> kUnits = {" ns", " µs", " ms", " s"};
  std::size_t unit = 0;
  for (; nanoseconds >= 999.5 && unit + 1 < kUnits.size(); ++unit) nanoseconds /= 1000;
  std::ostringstream text;
  text << std::fixed
       << std::setprecision(nanoseconds < 9.995   ? 2
                            : nanoseconds < 99.95 ? 1
                                                  : 0)
       << nanoseconds << kUnits[unit];
  return text.str();
}

// The text's grey and the bars are readable on white and on dark alike.
void draw_picture(std::ostream& out, const Results& results) {
  std::ostringstream body;
  body << std::fixed << std::setprecision(2);
  draw_legend(body);
  int y = kTop;
  for (const Row& row : results.rows()) {
    if (row.group != "life") continue;
    draw_life(body, results, row, y);
    y += kGroupHeight;
  }
  out << "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 " << kWidth << ' ' << y << "\" width=\""
      << kWidth << "\" height=\"" << y << "\" role=\"img\" aria-labelledby=\"title description\""
      << " font-family=\"sans-serif\" font-size=\"11\" fill=\"#787878\">\n"
      << "<title id=\"title\">How long an answer's life takes</title>\n"
      << "<desc id=\"description\">Bars for six answers, built, finished, written and destroyed with "
         "next_steps,"
         " RapidJSON, Boost.JSON and nlohmann's ordered_json. The table below the picture has the"
         " figures.</desc>\n";
  text(out, kLeft, 18, "Time of one answer's life; shorter is faster, each answer has its own scale");
  out << body.str() << "</svg>\n";
}

}  // namespace vantrex::bench
