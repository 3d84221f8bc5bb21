#include <array>
#include <functional>
#include <stdexcept>
#include <utility>

#include "calls.h"
#include "json_rpc.h"
#include "next_steps/explain.h"
#include "next_steps/print_answer.h"
#include "protocol.h"
#include "requests/json_reader.h"
#include "vantrex/adapters/nlohmann_json.h"
#include "vantrex/tool_handlers/next_steps.h"
#include "vantrex/tool_handlers/next_steps/explanation.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::growth {

namespace {

using tool_handlers::next_steps::explain_answer;
using tool_handlers::next_steps::Explanation;
using tool_handlers::next_steps::finish_answer;
using tool_handlers::next_steps::FinishOptions;
using values::JsonObject;
using values::JsonValue;

JsonObject answer_in(const std::string& text) {
  return next_steps_requests::read_json_object(text, "an answer");
}

// Counts `use(value)`, or its result if there is one.
template <auto use>
Work of_value(const std::string& text) {
  return [value = JsonValue(answer_in(text))]() mutable { keep(use(value)); };
}

struct Origin {
  const char* tool;
  const char* action;  // null for none
};

// Tools and actions whose rules take each kind of argument.
constexpr std::array<Origin, 5> kOrigins = {{{"git", nullptr},
                                             {"search", "symbols"},
                                             {"search", "code"},
                                             {"symbol", "callers"},
                                             {"architecture", nullptr}}};

// Counts `use(answer, tool, options)` for each origin. The request has the answer's fields as arguments.
template <auto use>
Work of_answer(const std::string& text) {
  return [answer = answer_in(text)] {
    for (const Origin& origin : kOrigins)
      keep(use(answer, origin.tool, FinishOptions{.action = origin.action, .arguments = &answer}));
  };
}

JsonObject finish(const JsonObject& answer, std::string_view tool, const FinishOptions& options) {
  return finish_answer(answer, tool, options);
}

Explanation explain(const JsonObject& answer, std::string_view tool, const FinishOptions& options) {
  return explain_answer(answer, tool, options);
}

template <auto use>
Work of_explanation(const std::string& text) {
  const JsonObject answer = answer_in(text);
  return [explained = explain(answer, "git", {.arguments = &answer})] { keep(std::invoke(use, explained)); };
}

// Counts the reply to a line of a batch.
Work line(const std::string& request) {
  return [request] { reply(request, {}); };
}

constexpr std::array kAnswerCalls = {
    Call{Kind::answer, "read_json",
         [](const std::string& text) -> Work {
           return [text] { keep(next_steps_requests::read_json(text)); };
         }},
    Call{Kind::answer, "copy", of_value<[](const JsonValue& value) { return JsonValue(value); }>},
    Call{Kind::answer, "comparison",
         [](const std::string& text) -> Work {
           return [a = answer_in(text), b = answer_in(text)] {
             if (a != b) throw std::logic_error("equal answers differ");
           };
         }},
    Call{Kind::answer, "compact_text", of_value<[](const JsonValue& value) { return compact_text(value); }>},
    Call{Kind::answer, "canonical_text",
         of_value<[](const JsonValue& value) { return canonical_text(value); }>},
    Call{Kind::answer, "pretty_text", of_value<next_steps_program::pretty_text>},
    Call{Kind::answer, "without_null_fields", of_value<[](JsonValue& value) {
           return tool_handlers::next_steps::without_null_fields(std::move(value));
         }>},
    Call{Kind::answer, "to_nlohmann",
         of_value<[](const JsonValue& value) { return adapters::to_nlohmann(value); }>},
    Call{Kind::answer, "from_nlohmann",
         [](const std::string& text) -> Work {
           return [json = adapters::to_nlohmann(answer_in(text))] { keep(adapters::from_nlohmann(json)); };
         }},
    Call{Kind::answer, "finish_answer", of_answer<finish>},
    Call{Kind::answer, "explain_answer", of_answer<explain>},
    Call{Kind::answer, "Explanation::to_dict", of_explanation<&Explanation::to_dict>},
    Call{Kind::answer, "explanation_text", of_explanation<[](const Explanation& explained) {
           return next_steps_program::explanation_text(explained, /*coloured=*/false);
         }>},
    Call{Kind::answer, "reply_to, finish",
         [](const std::string& text) { return line(R"({"tool":"git","response":)" + text + '}'); }},
    Call{Kind::answer, "reply_to, explain",
         [](const std::string& text) {
           return line(R"({"tool":"git","explain":true,"response":)" + text + '}');
         }},
    Call{Kind::answer, "reply_to, other members",
         [](const std::string& text) {
           return line(R"({"id":)" + text + R"(,"tool":"git","response":{},"arguments":)" + text +
                       R"(,"freshness":)" + text + '}');
         }},

    Call{Kind::line, "reply_to",
         [](const std::string& text) -> Work {
           return [text] { keep(next_steps_requests::reply_to(text, 1, {})); };
         }},
    Call{Kind::line, "code_index",
         [](const std::string& text) -> Work {
           static const code_index::CtagsRepository index("examples/index/models.json");
           return [text] {
             keep(code_index::answer_line(text, [](std::string_view method, const JsonObject& params) {
               return code_index::call_method(index, method, params);
             }));
           };
         }},
};

}  // namespace

std::span<const Call> answer_calls() {
  return kAnswerCalls;
}

void reply(const std::string& line, const next_steps_requests::ReplyContext& context) {
  const auto answered = next_steps_requests::reply_to(line, 1, context);
  keep(answered);
  if (answered.error) throw std::logic_error("an error instead of an answer: " + answered.line);
}

}  // namespace vantrex::growth
