// next-steps batch: replies to each line of its input; may run as a co-process.
#include <iostream>
#include <memory>
#include <optional>
#include <string>

#include <CLI/CLI.hpp>

#include "next_steps/command.h"
#include "next_steps/options.h"
#include "requests/index_file.h"
#include "requests/index_reader.h"
#include "requests/input.h"
#include "requests/output.h"
#include "requests/reply.h"
#include "requests/request_text.h"

namespace next_steps_program {

namespace {

struct BatchOptions {
  std::string file;
  std::string index;
  ServerOptions server;
  bool lossy = false;
};

ExitStatus batch(BatchOptions& options) {
  std::optional<requests::IndexFile> index;
  if (!options.index.empty()) index.emplace(options.index);
  const requests::ReplyContext context{options.server.serves(), index ? &*index : nullptr, options.lossy,
                                       options.server.catalogue()};
  requests::Output output;
  requests::Input input(options.file);
  announce(input, "requests, one per line,");
  requests::LineReader lines(input, [&output] { output.flush(); });
  std::size_t rejected = 0;
  std::string first_rejection;
  while (const auto line = lines.next()) {
    const requests::Reply reply = reply_to(*line, lines.line_number(), context);
    output.write(reply.line);
    output.write("\n");
    if (reply.error && rejected++ == 0) {
      first_rejection = in_source(input.name(), *reply.error, lines.line_number()).what();
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
  options->server.add_to(*parser);
  parser->add_flag("--lossy", options->lossy,
                   "Replace ill-formed UTF-8 and lone surrogates, as \"lossy\": true does");
  parser->footer(std::string(requests::kRequestForms) +
                 "Each line is answered by one line before the next one is read.\n\n"
                 "Universal Ctags makes the index:\n  " +
                 requests::kCtagsCommand + requests::kIndexForms);
  return {parser, [options] { return batch(*options); }};
}

}  // namespace next_steps_program
