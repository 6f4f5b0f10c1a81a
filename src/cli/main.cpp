#include "cli/Qxconf.h"
#include "files/Files.h"

#include <cstdlib>
#include <iostream>
#include <string_view>

namespace {

std::string_view Variable(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

} // namespace

int main(int argc, char** argv) {
    qx::files::GuardStandardStreams();
    std::ios::sync_with_stdio(false);
    const bool hasColor = Variable("NO_COLOR").empty() && Variable("TERM") != "dumb";
    const qx::cli::Streams streams{std::cout, std::cerr, qx::files::ErrorColumns(), hasColor};
    qx::cli::Surroundings surroundings;
    surroundings.driver = Variable("QXCONF_DRIVER");
    return qx::cli::Run({argv + 1, argv + argc}, streams, surroundings);
}
