// A host with the host layer: prints a new simulated keyboard's settings as a document.
//
// usage: host KEYBOARD
#include "host/Configuration.h"
#include "host/Session.h"
#include "simulator/SimulatedDriver.h"

#include <iostream>

#if __has_include("app/MainWindow.h") || __has_include("host/IniFile.h")
#error "headers that are not the host layer's own, or not public"
#endif

int main(int, char** argv) {
    qx::sim::SimulatedDriver driver(argv[1], "magnet");
    qx::host::Configuration configuration(qx::Platform(), nullptr, nullptr);
    qx::host::Session session(driver);
    session.Open();
    auto sections = session.SectionsIn(configuration);
    session.Upload(sections);
    std::cout << configuration.Write(sections, session.Keyboard()).ToText();
}
