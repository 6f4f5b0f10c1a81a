# The Debian 12 packages that this project needs, for the scripts that set up a machine.
build_packages=(g++ cmake ninja-build nlohmann-json3-dev libcli11-dev qt6-base-dev qt6-svg-dev
                qt6-tools-dev qt6-l10n-tools qt6-translations-l10n)
clang_packages=(clang libclang-rt-14-dev) # with the sanitizers' libraries
test_packages=("${clang_packages[@]}" libgtest-dev libbenchmark-dev pkgconf ansible-core
               python3-voluptuous yamllint libqt6opengl6-dev python3-jsonschema python3-dev
               pybind11-dev python3-mypy zsh fish mandoc man-db
               desktop-file-utils appstream shared-mime-info libglib2.0-bin
               at-spi2-core gir1.2-atspi-2.0 python3-gi dbus-daemon xvfb)
format_packages=(clang-format)
lint_packages=(clang-tidy)
cross_packages=(g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix mingw-w64-tools libwine
                googletest)
wine_packages=(wine64 fonts-wine xvfb)
package_packages=(nsis cmark-gfm mandoc zip unzip)
debian_packages=(dpkg-dev file gzip pybind11-dev python3-dev)
debian_test_packages=(mmdebstrap lintian)
qt_source_packages=(dpkg-dev debian-archive-keyring)
fuzz_packages=("${clang_packages[@]}")
