// A console host: prints the connected keyboard, and the prefixes and suffixes of its magnetic
// tracks as key codes. It needs only the control library.
//
// usage: console DRIVER    (the keyboard's driver library, such as TANDORQX.DLL)
#include "qxcontrols/device/DriverLibrary.h"
#include "qxcontrols/device/QXKeyboardAccess.h"
#include "qxcontrols/readers/QXMagnetCard.h"

#include <exception>
#include <iostream>

namespace {

void Print(const char* name, const qx::KeySequence& sequence) {
    std::cout << "  " << name << ":";
    for (const qx::Integer code : sequence.Codes())
        std::cout << " " << code;
    std::cout << "\n";
}

int Show(const char* library) {
    qx::DriverLibrary driver(library);
    qx::QXKeyboardAccess keyboard(driver);
    if (!keyboard.Init()) {
        std::cerr << "the keyboard cannot be opened\n";
        return 1;
    }
    std::cout << keyboard.Keyboard() << ", program " << keyboard.Program() << "\n";
    qx::QXMagnetCard card;
    card.SetKeyboard(&keyboard);
    keyboard.DataTransferPrepare();
    card.PrepareDataUpload(true);
    const qx::Long status = keyboard.Upload(); // keyboard to PC
    if (status == 0)
        card.DataUpload(true);
    keyboard.DataTransferFixUp();
    for (qx::Integer number = 1; status == 0 && number <= 4; ++number) {
        std::cout << "track " << number << "\n";
        Print("prefix", card.Track(number).Header());
        Print("suffix", card.Track(number).Terminator());
    }
    keyboard.Done();
    return status == 0 ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    try {
        return argc == 2 ? Show(argv[1]) : 2;
    } catch (const std::exception& error) {
        std::cerr << error.what() << "\n";
        return 1;
    }
}
