#include "cli/Qxconf.h"
#include "files/Files.h"

#include <cstdlib>
#include <iostream>

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    qx::cli::Streams streams{std::cout, std::cerr};
    streams.errIsTerminal = qx::files::ErrorIsTerminal();
    qx::cli::Surroundings surroundings;
    const char* noColor = std::getenv("NO_COLOR");
    surroundings.noColor = !streams.errIsTerminal || (noColor != nullptr && *noColor != '\0');
    return qx::cli::Run({argv + 1, argv + argc}, streams, surroundings);
}
