#include "cli/Qxconf.h"
#include "files/Files.h"
#include "files/SystemTexts.h"

#include <iostream>

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    qx::files::PrepareStandardStreams();
    const bool hasColor = qx::files::Variable("NO_COLOR").empty() && qx::files::ErrorShowsColors();
    const qx::cli::Streams streams{std::cout, std::cerr, qx::files::ErrorColumns(), hasColor};
    qx::cli::Surroundings surroundings;
    surroundings.driver = qx::files::PathOf(qx::files::Variable("QXCONF_DRIVER"));
    return qx::cli::Run(qx::files::Arguments(argc, argv), streams, surroundings);
}
