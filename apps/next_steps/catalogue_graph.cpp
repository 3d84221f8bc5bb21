#include "next_steps/catalogue_graph.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "vantrex/logging/quoted_literal.h"

namespace next_steps_program {

namespace {

constexpr std::size_t kRowHeight = 26;
constexpr std::size_t kBoxHeight = 20;
constexpr std::size_t kBoxWidth = 220;
constexpr std::size_t kTop = 40;
constexpr std::size_t kLeft = 10;
constexpr std::size_t kRight = 490;

// The first colours are for a white page, the second for a dark one.
constexpr std::string_view kHead = R"(
  <title>The catalogue: which answer leads to which call</title>
  <style>
    text { font: 13px monospace; fill: #1f2933 }
    .head { fill: #76828f }
    rect { fill: #e8edf2; stroke: #7b8794 }
    .end { stroke-dasharray: 2 3 }
    path { fill: none; stroke: #4a7fb5; stroke-width: 1.5 }
    .signal { stroke: #c07a1a; stroke-dasharray: 6 4 }
    @media (prefers-color-scheme: dark) {
      text { fill: #e4e9ee }
      rect { fill: #2b333b }
      path { stroke: #7fb2e5 }
      .signal { stroke: #e0a44a }
    }
  </style>
  <text class="head" x="10" y="24">answer of</text>
  <text class="head" x="490" y="24">leads to (dashed: signals)</text>
)";

std::string number(std::size_t value) {
  return std::to_string(value);
}

struct Edge {
  std::size_t answer;  // index into the answers
  std::size_t call;    // index into the calls
  bool is_signal;
};

// A call: its name, such as "symbol:detail", and whether its answer leads to another.
struct Call {
  std::string name;
  bool leads_on;
};

class Graph {
 public:
  explicit Graph(const ServerTables& tables) : tables_(tables) {
    for (const module::UsualRow* row : tables.rows()) {
      const std::size_t answer = place_of_answer(row->key);
      for (const module::Call* call : tables.calls(*row)) add(answer, *call, false);
    }
    for (const module::SignalRow* row : tables.signals()) {
      add(place_of_answer(row->key), row->signal->call, true);
    }
  }

  std::string svg() const {
    const std::vector<std::size_t> call_ys = ys_of_calls();
    const std::string height = number(kTop + kRowHeight * answers_.size() + 10);
    std::string text = R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 720 )" + height +
                       R"(" width="720" height=")" + height + R"(" role="img">)";
    text += kHead;
    for (const Edge& edge : edges_) text += path(y_of(edge.answer), call_ys[edge.call], edge.is_signal);
    for (std::size_t place = 0; place < answers_.size(); ++place) {
      const bool leads_on =
          std::any_of(edges_.begin(), edges_.end(), [&](const Edge& edge) { return edge.answer == place; });
      text += box(kLeft, y_of(place), answers_[place], leads_on);
    }
    for (std::size_t place = 0; place < calls_.size(); ++place) {
      text += box(kRight, call_ys[place], calls_[place].name, calls_[place].leads_on);
    }
    return text + "</svg>\n";
  }

 private:
  std::size_t place_of_answer(std::string_view key) {
    const auto found = std::find(answers_.begin(), answers_.end(), key);
    const auto place = static_cast<std::size_t>(found - answers_.begin());
    if (found == answers_.end()) answers_.emplace_back(key);
    return place;
  }

  void add(std::size_t answer, const module::Call& to, bool is_signal) {
    const std::optional<std::string_view> action = action_of(to);
    const AnswerOf next{std::string(to.tool.view()),
                        action ? std::optional<std::string>(*action) : std::nullopt};
    const std::string name = next.tool + (next.action ? ":" + *next.action : "");
    const auto found =
        std::find_if(calls_.begin(), calls_.end(), [&](const Call& call) { return call.name == name; });
    edges_.push_back({answer, static_cast<std::size_t>(found - calls_.begin()), is_signal});
    if (found == calls_.end()) calls_.push_back({name, tables_.leads_on(next)});
  }

  static std::size_t y_of(std::size_t place) { return kTop + kRowHeight * place; }

  // Returns the y coordinate of each call. The calls are ordered by the mean index of the
  // answers that lead to them, so that few lines cross.
  std::vector<std::size_t> ys_of_calls() const {
    std::vector<std::pair<double, std::size_t>> order;
    for (std::size_t call = 0; call < calls_.size(); ++call) {
      double sum = 0;
      double count = 0;
      for (const Edge& edge : edges_) {
        if (edge.call != call) continue;
        sum += static_cast<double>(edge.answer);
        ++count;
      }
      order.emplace_back(sum / count, call);
    }
    std::sort(order.begin(), order.end());
    std::vector<std::size_t> call_ys(calls_.size());
    for (std::size_t place = 0; place < order.size(); ++place) {
      const std::size_t spread = kRowHeight * answers_.size() * (2 * place + 1) / (2 * order.size());
      call_ys[order[place].second] = kTop + spread - kRowHeight / 2;
    }
    return call_ys;
  }

  static std::string attribute(std::string_view name, const std::string& value) {
    return ' ' + std::string(name) + "=\"" + value + '"';
  }

  // Returns `name` as XML text on one line.
  static std::string xml_text(const std::string& name) {
    std::string text;
    for (const char byte : vantrex::logging::printable(name)) {
      text += byte == '<' ? "&lt;" : byte == '&' ? "&amp;" : std::string(1, byte);
    }
    return text;
  }

  static std::string box(std::size_t x, std::size_t y, const std::string& name, bool leads_on) {
    return "  <rect" + attribute("x", number(x)) + attribute("y", number(y)) +
           attribute("width", number(kBoxWidth)) + attribute("height", number(kBoxHeight)) +
           attribute("rx", "4") + (leads_on ? "" : attribute("class", "end")) + "/><text" +
           attribute("x", number(x + 8)) + attribute("y", number(y + 14)) + ">" + xml_text(name) +
           "</text>\n";
  }

  static std::string path(std::size_t from, std::size_t to, bool is_signal) {
    const std::string begin = number(from + kBoxHeight / 2);
    const std::string end = number(to + kBoxHeight / 2);
    const std::string line = "M" + number(kLeft + kBoxWidth) + " " + begin + "C360 " + begin + " 360 " + end +
                             " " + number(kRight) + " " + end;
    return "  <path" + (is_signal ? attribute("class", "signal") : "") + attribute("d", line) + "/>\n";
  }

  const ServerTables& tables_;
  std::vector<std::string> answers_;
  std::vector<Call> calls_;
  std::vector<Edge> edges_;
};

}  // namespace

std::string catalogue_graph(const ServerTables& tables) {
  return Graph(tables).svg();
}

}  // namespace next_steps_program
