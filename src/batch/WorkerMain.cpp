// qxbatchworker: programs units for "qxconf batch --jobs", which starts it.
#include "batch/Worker.h"
#include "files/Files.h"
#include "host/ErrorText.h"

#include <iostream>

int main() {
    qx::files::PrepareStandardStreams();
    try {
        auto channel = qx::process::Channel::ToParent();
        qx::batch::Work(channel);
        return 0;
    } catch (const qx::host::Error& error) {
        std::cerr << "qxbatchworker: " << qx::host::TextOf(error) << '\n';
        return 2;
    } catch (const std::exception& error) {
        std::cerr << "qxbatchworker: " << error.what() << '\n';
        return 2;
    }
}
