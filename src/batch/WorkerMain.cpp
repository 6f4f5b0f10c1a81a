// qxbatchworker: programs units for "qxconf batch --jobs", which starts it.
#include "batch/Worker.h"

#include <iostream>

int main() {
    try {
        auto channel = qx::process::Channel::ToParent();
        qx::batch::Work(channel);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "qxbatchworker: " << error.what() << '\n';
        return 2;
    }
}
