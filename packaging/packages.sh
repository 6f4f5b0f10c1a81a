# What this project needs of Debian 12, for the scripts that set a machine up.
build_packages=(g++ cmake ninja-build nlohmann-json3-dev libcli11-dev qt6-base-dev)
test_packages=(libgtest-dev libbenchmark-dev)
cross_packages=(g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix)
fuzz_packages=(clang libclang-rt-14-dev)
