// next-steps batch: replies to each line of its input; may run as a co-process.
#include <iostream>
#include <memory>
#include <optional>
#include <string>

#include <CLI/CLI.hpp>

#include "next_steps/batch_request.h"
#include "next_steps/command.h"
#include "next_steps/ctags_index.h"
#include "next_steps/failures.h"
#include "next_steps/index_file.h"
#include "next_steps/input.h"
#include "next_steps/output.h"
#include "next_steps/serves_option.h"

namespace next_steps_program {

namespace {

struct BatchOptions {
  std::string file;
  std::string index;
  ServesOption serves;
  bool lossy = false;
};

ExitStatus batch(const BatchOptions& options) {
  std::optional<IndexFile> index;
  if (!options.index.empty()) index.emplace(options.index);
  const BatchContext context{options.serves.set(), index ? &*index : nullptr, options.lossy};
  Output output;
  Input input(options.file, "requests, one per line,");
  LineReader lines(input, [&output] { output.flush(); });
  std::size_t rejected = 0;
  std::string first_rejection;
  while (const auto line = lines.next()) {
    const BatchReply reply = reply_to(*line, lines.line_number(), context);
    output.write(reply.line);
    output.write("\n");
    if (reply.error && rejected++ == 0) {
      first_rejection = InputRejected(input.name(), lines.line_number(), *reply.error).what();
    }
  }
  output.flush();
  if (rejected == 0) return ExitStatus::done;
  std::cerr << first_rejection << " (lines rejected: " << rejected << ")\n";
  return ExitStatus::input_rejected;
}

}  // namespace

Command add_batch(CLI::App& program) {
  auto options = std::make_shared<BatchOptions>();
  CLI::App* parser = program.add_subcommand("batch", "Answer a stream of requests, one per line");
  parser->add_option("FILE", options->file, "The requests; standard input if FILE is - or missing")
      ->type_name("");
  parser
      ->add_option("--index", options->index,
                   "The index for misses; it is read again when the file is replaced")
      ->check([](const std::string& file) { return file.empty() || file == "-" ? "must be a file" : ""; })
      ->type_name("INDEX");
  options->serves.add_to(*parser);
  parser->add_flag("--lossy", options->lossy,
                   "Replace ill-formed UTF-8 and lone surrogates, as \"lossy\": true does");
  parser->footer(
      "A request is one of these JSON objects:\n"
      "  {\"response\": object, \"tool\": string, \"action\"?: string}\n"
      "      asks for the finished answer; with \"explain\": true, for what explain --json prints\n"
      "  {\"suggest\": \"symbol\" or \"path\", \"wanted\": string, \"action\"?: string, \"response\"?: "
      "object}\n"
      "      asks for what suggest prints, from the index\n"
      "Each may also have \"arguments\": object, \"freshness\": object,\n"
      "\"serves\": [\"symbol:detail\", ...] and \"lossy\": true, which replaces ill-formed UTF-8 and\n"
      "lone surrogates by U+FFFD; otherwise they are errors.\n"
      "Each line is answered by one line before the next one is read. A line that is not a\n"
      "request, such as an empty one, is answered by {\"error\": {\"line\", \"column\", \"message\"}}.\n"
      "A request with an \"id\", any value, is answered by {\"id\", \"answer\"} or {\"id\", \"error\"}.\n"
      "Universal Ctags makes the index:\n  " +
      std::string(kCtagsCommand));
  return {parser, [options] { return batch(*options); }};
}

}  // namespace next_steps_program
