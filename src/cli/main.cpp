#include "cli/Qxconf.h"

#include <cstdlib>
#include <iostream>

#ifdef _WIN32
#include <io.h>
#define isatty _isatty
#else
#include <unistd.h>
#endif

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    qx::cli::Streams streams{std::cin, std::cout, std::cerr};
    streams.errIsTerminal = isatty(2) != 0;
    qx::cli::Surroundings surroundings;
    const char* noColor = std::getenv("NO_COLOR");
    surroundings.noColor = !streams.errIsTerminal || (noColor != nullptr && *noColor != '\0');
    return qx::cli::Run({argv + 1, argv + argc}, streams, surroundings);
}
