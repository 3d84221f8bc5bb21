#include "report/picture.h"

#include <algorithm>
#include <iomanip>
#include <string_view>

#include "report/tables.h"

namespace vantrex::bench {

namespace {

constexpr int kWidth = 760;
constexpr int kLeft = 90;
constexpr int kTop = 64;
constexpr int kBarHeight = 13;
constexpr int kGroupGap = 14;
constexpr int kGroupHeight = kBarHeight * (1 + static_cast<int>(kPeerNames.size())) + kGroupGap;
constexpr int kHeight = kTop + kGroupHeight * static_cast<int>(kAnswers.size()) + 8;
constexpr int kLongestBar = 480;

struct Bar {
  std::string_view contender;
  std::string_view colour;
};
constexpr std::array<Bar, 4> kBars = {{{kOwnName, "#1a7f5a"},
                                       {kPeerNames[0], "#6f8fc9"},
                                       {kPeerNames[1], "#b58cc4"},
                                       {kPeerNames[2], "#d3a15c"}}};

void text(std::ostream& out, int x, int y, std::string_view anchor, std::string_view content) {
  out << "<text x=\"" << x << "\" y=\"" << y << "\" text-anchor=\"" << anchor << "\">" << content
      << "</text>\n";
}

void box(std::ostream& out, int x, int y, double width, std::string_view colour) {
  out << "<rect x=\"" << x << "\" y=\"" << y << "\" width=\"" << width << "\" height=\"" << kBarHeight - 2
      << "\" fill=\"" << colour << "\"/>\n";
}

void draw_legend(std::ostream& out) {
  int x = kLeft;
  for (const Bar& bar : kBars) {
    box(out, x, 34, 11, bar.colour);
    text(out, x + 16, 44, "start", bar.contender);
    x += 120;
  }
}

void draw_time(std::ostream& out, int y, double nanoseconds, double width) {
  const bool is_long = nanoseconds >= 1e6;
  out << "<text x=\"" << kLeft + width + 6 << "\" y=\"" << y << "\">" << nanoseconds / (is_long ? 1e6 : 1e3)
      << (is_long ? " ms" : " µs") << "</text>\n";
}

void draw_answer(std::ostream& out, const Results& results, std::string_view answer, int y) {
  double longest = 0;
  for (const Bar& bar : kBars) longest = std::max(longest, time_of(results, "finish", answer, bar.contender));
  text(out, kLeft - 10, y + 2 * kBarHeight + 3, "end", answer);
  for (const Bar& bar : kBars) {
    const double time = time_of(results, "finish", answer, bar.contender);
    const double width = kLongestBar * time / longest;
    box(out, kLeft, y, width, bar.colour);
    draw_time(out, y + kBarHeight - 4, time, width);
    y += kBarHeight;
  }
}

}  // namespace

void draw_picture(std::ostream& out, const Results& results) {
  out << std::fixed << std::setprecision(2) << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << kWidth
      << "\" height=\"" << kHeight << "\" font-family=\"sans-serif\" font-size=\"11\" fill=\"#333\">\n"
      << "<rect width=\"100%\" height=\"100%\" fill=\"#fff\"/>\n";
  text(out, kLeft, 20, "start",
       "Time to finish one answer; shorter is faster, each answer has its own scale");
  draw_legend(out);
  int y = kTop;
  for (const std::string_view answer : kAnswers) {
    draw_answer(out, results, answer, y);
    y += kGroupHeight;
  }
  out << "</svg>\n";
}

}  // namespace vantrex::bench
