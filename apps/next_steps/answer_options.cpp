#include "next_steps/answer_options.h"

#include <CLI/CLI.hpp>

#include "next_steps/failures.h"
#include "next_steps/input.h"
#include "next_steps/json_reader.h"
#include "next_steps/usage.h"

namespace next_steps_program {

using vantrex::values::JsonObject;

namespace {

// Returns the object in the text of an option, or nothing for "null".
std::optional<JsonObject> option_object(const std::string& option, const std::string& text) {
  if (text == "null") return std::nullopt;
  try {
    return read_json_object(text, "the value of " + option);
  } catch (const JsonError& error) {
    throw InputRejected(option, error);
  }
}

}  // namespace

void RequestOptions::add_to(CLI::App& parser, const std::string& action_help) {
  parser.add_option("--action", action_, action_help)->type_name("ACTION");
  parser.add_option("--arguments", arguments_, "The request's arguments, an object")->type_name("JSON");
  parser.add_option("--freshness", freshness_, "The freshness block, an object")->type_name("JSON");
  serves_.add_to(parser);
}

Request RequestOptions::read() const {
  Request request;
  request.action = action_;
  request.serves = serves_.set();
  request.arguments = option_object("--arguments", arguments_);
  request.freshness = option_object("--freshness", freshness_);
  return request;
}

JsonObject read_answer(const std::string& file) {
  Input input(file, "an answer");
  try {
    return read_json_object(input.read_all(), "an answer");
  } catch (const JsonError& error) {
    throw InputRejected(input.name(), error);
  }
}

void AnswerOptions::add_to(CLI::App& parser) {
  parser.add_option("--tool", tool_, "The tool that answered")
      ->required()
      ->check(refuse_empty)
      ->type_name("TOOL");
  request_.add_to(parser, "The action that it ran");
  parser.add_option("FILE", file_, "The answer, an object; standard input if FILE is - or missing")
      ->type_name("");
}

Request AnswerOptions::read() const {
  Request request = request_.read();
  request.tool = tool_;
  request.response = read_answer(file_);
  return request;
}

}  // namespace next_steps_program
