// qxidl IDL MANIFEST: writes the type library's source text and the side-by-side manifest to these
// files.
#include "com/Idl.h"
#include "com/Manifest.h"

#include <cstdlib>
#include <fstream>
#include <iostream>

namespace {

bool Write(const char* name, const std::string& text) {
    std::ofstream file(name, std::ios::binary);
    file << text << std::flush;
    if (!file)
        std::cerr << "qxidl: cannot write " << name << "\n";
    return file.good();
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: qxidl IDL MANIFEST\n";
        return EXIT_FAILURE;
    }
    const bool done = Write(argv[1], qx::com::IdlText()) && Write(argv[2], qx::com::ManifestText());
    return done ? EXIT_SUCCESS : EXIT_FAILURE;
}
