#include "next_steps/answer_options.h"

#include <iostream>

#include <CLI/CLI.hpp>

#include "next_steps/usage.h"
#include "requests/json_reader.h"

namespace next_steps_program {

using values::JsonObject;

namespace {

// Returns the object in the text of an option, or nothing for "null".
std::optional<JsonObject> option_object(const std::string& option, const std::string& text) {
  if (text == "null") return std::nullopt;
  try {
    return requests::read_json_object(text, "the value of " + option);
  } catch (const requests::JsonError& error) {
    throw requests::in_source(option, error);
  }
}

}  // namespace

void RequestOptions::add_to(CLI::App& parser, const std::string& action_help) {
  parser.add_option("--action", action_, action_help)->type_name("ACTION");
  parser.add_option("--arguments", arguments_, "The request's arguments, an object")->type_name("JSON");
  parser.add_option("--freshness", freshness_, "The freshness block, an object")->type_name("JSON");
  server_.add_to(parser);
}

requests::Request RequestOptions::read() {
  requests::Request request;
  request.action = action_;
  request.serves = server_.serves();
  request.catalogue = server_.catalogue();
  request.arguments = option_object("--arguments", arguments_);
  request.freshness = option_object("--freshness", freshness_);
  return request;
}

JsonObject read_answer(const std::string& file) {
  requests::Input input(file);
  announce(input, "an answer");
  try {
    return requests::read_json_object(input.read_all(), "an answer");
  } catch (const requests::JsonError& error) {
    throw requests::in_source(input.name(), error);
  }
}

void announce(const requests::Input& input, std::string_view awaited) {
  if (!input.is_terminal()) return;
  std::cerr << "next-steps: waiting for " << awaited << " on standard input; Ctrl-D ends it\n";
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

requests::Request AnswerOptions::read() {
  requests::Request request = request_.read();
  request.tool = tool_;
  request.response = read_answer(file_);
  return request;
}

}  // namespace next_steps_program
