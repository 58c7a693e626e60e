#include <campotipo/version.h>

#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>
#include <new>
#include <sstream>

#include "commands/commands.hpp"
#include "terminal/failure.hpp"
#include "terminal/output.hpp"
#include "terminal/tell.hpp"
#include "text/quote.hpp"

namespace campotipo::tool {

using namespace campotipo::records;

namespace {

constexpr const char *kAbout =
    "See, check and move files of fixed-layout records.\n\n"
    "Exit status: 0 all is well; 1 check found something, a file does not follow its layout, or a\n"
    "value does not fit whole and --lossy was not given; 2 a command, layout or file that cannot\n"
    "be used.";

void add_all(CLI::App &app, Action &action) {
  app.require_subcommand(1);
  app.set_version_flag("--version", "campotipo " CAMPOTIPO_VERSION);
  app.footer("campotipo COMMAND --help tells more, with an example.");
  add_types(app, action);
  add_show(app, action);
  add_make(app, action);
  add_layout(app, action);
  add_dump(app, action);
  add_load(app, action);
  add_check(app, action);
  add_stats(app, action);
  add_report(app, action);
  add_document(app, action);
}

// What the parser would print goes the same way as every other output, so that a full disk is seen.
int leave(const CLI::App &app, const CLI::ParseError &error) {
  std::ostringstream out;
  std::ostringstream wrong;
  const bool good = app.exit(error, out, wrong) == 0;
  if (!wrong.str().empty()) std::cerr << "campotipo: " + printable_lines(wrong.str());
  Output output("");
  output.write(out.str());
  output.commit();
  return good ? kGood : kUnusable;
}

int run(int argc, char **argv) {
  CLI::App app(kAbout, "campotipo");
  Action action;
  add_all(app, action);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError &error) {
    return leave(app, error);
  }
  return action();
}

}  // namespace
}  // namespace campotipo::tool

int main(int argc, char **argv) {
  using namespace campotipo::tool;
  try {
    return run(argc, argv);
  } catch (const Failure &failure) {
    tell(failure.what());
    return failure.status();
  } catch (const std::bad_alloc &) {
    tell("out of memory");
  } catch (const std::exception &error) {
    tell(error.what());
  }
  return kUnusable;
}
