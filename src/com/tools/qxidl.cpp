// qxidl FILE: writes the type library's source text to the file.
#include "com/Idl.h"

#include <cstdlib>
#include <fstream>
#include <iostream>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: qxidl FILE\n";
        return EXIT_FAILURE;
    }
    std::ofstream file(argv[1], std::ios::binary);
    file << qx::com::IdlText() << std::flush;
    if (!file) {
        std::cerr << "qxidl: cannot write " << argv[1] << "\n";
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
