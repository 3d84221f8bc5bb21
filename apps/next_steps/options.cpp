#include "next_steps/options.h"

#include <iostream>
#include <sstream>
#include <stdexcept>

#include <CLI/CLI.hpp>

#include "next_steps/usage.h"
#include "requests/object_input.h"
#include "requests/request_text.h"

namespace next_steps_program {

using values::JsonObject;

namespace {

// Returns the object in the text of an option, or nothing for "null".
std::optional<JsonObject> option_object(const std::string& option, const std::string& text) {
  if (text == "null") return std::nullopt;
  return requests::read_object(option, text, "the value of " + option);
}

}  // namespace

void ServerOptions::add_to(CLI::App& parser) {
  const auto parse = [this](const std::string& text) {
    serves_.emplace();
    std::istringstream list(text + ',');
    try {
      for (std::string each; std::getline(list, each, ',');) serves_->add(requests::read_served_tool(each));
    } catch (const std::invalid_argument& error) {
      throw CLI::ValidationError("--serves", error.what());
    }
  };
  parser
      .add_option_function<std::string>("--serves", parse,
                                        "What the server has: whole tools, and single actions")
      ->type_name("TOOL[:ACTION],...");
  parser
      .add_option("--catalogue", catalogue_file_, "The server's own catalogue, instead of the built-in one")
      ->check(refuse_empty)
      ->type_name("FILE");
}

const module::Catalogue* ServerOptions::catalogue() {
  if (!catalogue_ && !catalogue_file_.empty()) catalogue_ = requests::read_catalogue(catalogue_file_);
  return catalogue_ ? &*catalogue_ : nullptr;
}

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

JsonObject read_answer(const std::string& file) {
  requests::Input input(file);
  announce(input, "an answer");
  return requests::read_object(input.name(), input.read_all(), "an answer");
}

void announce(const requests::Input& input, std::string_view awaited) {
  if (!input.is_terminal()) return;
  std::cerr << "next-steps: waiting for " << awaited << " on standard input; Ctrl-D ends it\n";
}

}  // namespace next_steps_program
