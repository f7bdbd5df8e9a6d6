#include "workbench/app/CommandLine.h"

#include "QorVersion.h"

#include <CLI/CLI.hpp>

namespace qor::app {

namespace {

constexpr const char* usage = R"(usage: qorworkbench [OPTIONS] [FILE]

Photographs of products: open a model, light it, render it. Opens FILE, a document or a model, in
a window.

What to open
  FILE              A file that cannot be opened is reported, and the program runs on without it.

How to run
  --headless        Run without any window or display. The program does what the automation port
                    asks for; without --listen it waits to be ended.
  --theme NAME      Look of the windows this time: system (follow the desktop), light or dark; by
                    default as it was chosen in the menu View.

Automation
  --listen SOCKET   Let another program see and do all that a person can, by JSON-RPC 2.0, one
                    message a line, at the Unix-domain socket SOCKET. Only you can reach it; it is
                    removed at the end. An abandoned socket is replaced, one in use is refused.
  --once            End when the first client hangs up. Needs --listen.

For developers
  --trace LEVEL     Write trace lines to standard error: 1 errors, 2 life of dialogs and
                    singletons, 3 OK and Cancel, 4 most operations, 5 and 6 very frequent ones.
  --gallery         Show every kind of widget in each of its states (menu Developer).

  -h, --help        Print this text and end.
  -V, --version     Print name and version and end.

Exit codes
  0  done; also after SIGTERM or SIGINT, which end the program in good order
  1  it could not run: no display, or the socket cannot be listened at
  2  the command line is wrong

Environment
  QorStartupPath    Directories with messages/, resources/ and rendering/ of your own, separated by
                    colons; set to the program's own resources when it is unset.
  LANGUAGE, LANG    Language of all texts: English, French, German.
  XDG_CONFIG_HOME   Settings are kept in qorworkbench/ below it (default ~/.config).
  XDG_DATA_HOME     Recent pictures and what recovery needs, likewise (default ~/.local/share).

Examples
  qorworkbench gear.step
  qorworkbench --headless --listen /tmp/qor.sock --once &
  echo '{"jsonrpc":"2.0","id":1,"method":"app.info"}' | nc -U /tmp/qor.sock
)";

constexpr int highestTraceLevel = 6;

std::unique_ptr<CLI::App> makeReader(Options& options) {
    auto reader = std::make_unique<CLI::App>();
    reader->set_help_flag();
    reader->add_flag("--headless", options.isHeadless);
    reader->add_flag("--gallery", options.hasGallery);
    reader->add_option("--theme", options.theme)->check(CLI::IsMember({"system", "light", "dark"}));
    reader->add_option("--trace", options.traceLevel)->check(CLI::Range(0, highestTraceLevel));
    CLI::Option* listen = reader->add_option("--listen", options.socket);
    reader->add_flag("--once", options.isOnce)->needs(listen);
    reader->add_option("FILE", options.file);
    return reader;
}

Answer wrong(const std::string& reason) {
    return {exitUsage, "qorworkbench: " + reason +
                           "\nqorworkbench --help lists the options and what they mean\n"};
}

} // namespace

std::variant<Options, Answer> readCommandLine(int count, const char* const* arguments) {
    Options options;
    bool wantsHelp = false;
    bool wantsVersion = false;
    const auto reader = makeReader(options);
    reader->add_flag("-h,--help", wantsHelp);
    reader->add_flag("-V,--version", wantsVersion);
    try {
        reader->parse(count, arguments);
    } catch (const CLI::ParseError& error) {
        return wrong(error.what());
    }
    if (wantsHelp)
        return Answer{exitDone, usage};
    if (wantsVersion)
        return Answer{exitDone, std::string("qorworkbench ") + QorVersion() + "\n"};
    if (reader->count("--listen") != 0 && options.socket.empty())
        return wrong("--listen: the path of the socket is empty");
    return options;
}

} // namespace qor::app
