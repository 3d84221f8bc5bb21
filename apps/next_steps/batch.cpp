// next-steps batch: a finished answer for each line, also as a co-process.
#include <iostream>
#include <memory>
#include <string>
#include <utility>

#include "next_steps/command.h"
#include "next_steps/failures.h"
#include "next_steps/input.h"
#include "next_steps/output.h"
#include "next_steps/request.h"
#include "next_steps/serves_option.h"
#include "vantrex/tool_handlers/tool_result.h"
#include "vantrex/values/text_forms.h"

namespace next_steps_program {

using vantrex::values::JsonObject;

namespace {

// The line that stands in the place of a finished answer.
std::string error_line(std::size_t line, const JsonError& error) {
  return compact_text(JsonObject{
      {"error", JsonObject{{"line", line}, {"column", error.place().column}, {"message", error.what()}}}});
}

struct BatchOptions {
  std::string file;
  ServesOption serves;
};

ExitStatus batch(const BatchOptions& options) {
  Output output;
  Input input(options.file, "requests, one a line,");
  LineReader lines(input, [&output] { output.flush(); });
  std::size_t rejected = 0;
  std::string first_rejection;
  while (const auto line = lines.next()) {
    try {
      Request request = read_request(*line);
      request.serves = options.serves.set();
      output.write(vantrex::tool_handlers::tool_result_text(finished(std::move(request))));
    } catch (const JsonError& error) {
      output.write(error_line(lines.line_number(), error));
      if (rejected++ == 0) {
        first_rejection = InputRejected(input.name(), lines.line_number(), error).what();
      }
    }
    output.write("\n");
  }
  output.flush();
  if (rejected == 0) return ExitStatus::done;
  std::cerr << first_rejection << " (lines rejected: " << rejected << ")\n";
  return ExitStatus::input_rejected;
}

}  // namespace

Command add_batch(CLI::App& program) {
  auto options = std::make_shared<BatchOptions>();
  CLI::App* parser = program.add_subcommand("batch", "Finish the answers of a stream of JSON lines");
  parser->add_option("FILE", options->file, "The requests, one a line; standard input when - or none")
      ->type_name("");
  options->serves.add_to(*parser);
  parser->footer(
      "A request is {\"response\": object, \"tool\": string} with, as known, \"action\": string,\n"
      "\"arguments\": object, \"freshness\": object. Each line is answered by one line, before the\n"
      "next is waited for: the finished answer, or {\"error\": {\"line\", \"column\", \"message\"}}\n"
      "for a line that is no request, an empty one included.");
  return {parser, [options] { return batch(*options); }};
}

}  // namespace next_steps_program
