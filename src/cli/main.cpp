#include "cli/Qxconf.h"
#include "cli/Terminal.h"

#include <iostream>

int main(int argc, char** argv) {
    qx::files::GuardStandardStreams();
    std::ios::sync_with_stdio(false);
    const qx::cli::Streams streams{std::cout, std::cerr, qx::cli::TerminalColumns(),
                                   qx::cli::TerminalHasColor()};
    return qx::cli::Run({argv + 1, argv + argc}, streams);
}
