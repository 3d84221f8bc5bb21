#include "next_steps/server_options.h"

#include <sstream>
#include <stdexcept>

#include <CLI/CLI.hpp>

#include "next_steps/usage.h"
#include "requests/catalogue_file.h"
#include "requests/request_text.h"

namespace next_steps_program {

void ServerOptions::add_to(CLI::App& parser) {
  const auto parse = [this](const std::string& text) {
    std::istringstream list(text + ',');
    try {
      for (std::string each; std::getline(list, each, ',');)
        tools_.push_back(requests::read_served_tool(each));
    } catch (const std::invalid_argument& error) {
      throw CLI::ValidationError("--serves", error.what());
    }
    serves_.emplace(tools_);
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

}  // namespace next_steps_program
