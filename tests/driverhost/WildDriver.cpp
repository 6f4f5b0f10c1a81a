// A driver library for tests: the simulated keyboard, until it misbehaves.
//
// A file beside the keyboard's, with ".wild" added to its name, chooses the misbehaviour: "FUNCTION
// ACTION", where "*" means every function. Two actions are harmless: "echo" writes the call to a
// file with ".log" added to the name and returns its own values instead of the keyboard's; "log"
// writes the names of all calls there.
#include "WildSystem.h"

#include "files/Files.h"
#include "simulator/SimulatedDriver.h"

#include <chrono>
#include <cstring>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <thread>
#include <type_traits>

namespace {

using namespace qx::test;

std::unique_ptr<qx::sim::SimulatedDriver> theKeyboard;
qx::MessagePoster thePoster = nullptr;
std::string theFile;
std::string theFunction;
std::string theAction;

std::string TextIn(const std::string& file) {
    std::ostringstream text;
    text << std::ifstream(file).rdbuf();
    return text.str();
}

template <typename Argument>
std::string Written(Argument argument) {
    if constexpr (std::is_same_v<Argument, char*>)
        return argument;
    else if constexpr (std::is_pointer_v<Argument>)
        return "out";
    else
        return std::to_string(argument);
}

void Answer(char* text) {
    text[0] = '!';
}
void Answer(std::uint8_t* value) {
    *value = 201;
}
void Answer(std::int16_t* value) {
    *value = -20'002;
}
void Answer(std::int32_t* value) {
    *value = *value * 2 + 1;
}
template <typename Other>
void Answer(Other /*unchanged*/) {}

void Log(const std::string& text) {
    std::ofstream(theFile + ".log", std::ios::app | std::ios::binary) << text << '\n';
}

template <typename... Arguments>
std::int32_t Echo(const std::string& name, Arguments... arguments) {
    Log(name + (std::string() + ... + (" " + Written(arguments))));
    (Answer(arguments), ...);
    return -static_cast<std::int32_t>(name.size());
}
// A block has no terminator of its own.
std::int32_t Echo(const std::string& name, std::int32_t address, const char* buffer,
                  std::int32_t size) {
    Log(name + " " + std::to_string(address) + " " +
        std::string(buffer, static_cast<std::size_t>(size)) + " " + std::to_string(size));
    return -static_cast<std::int32_t>(name.size());
}
std::int32_t Echo(const std::string& name, std::int32_t address, char* buffer, std::int32_t size) {
    const std::int32_t status = Echo(name, address, static_cast<const char*>(buffer), size);
    buffer[size - 1] = '!';
    return status;
}

void Overrun(char* buffer, int at) {
    buffer[at] = 'x';
}
template <typename Other>
void Overrun(Other /*nothing to overrun*/, int /*at*/) {}

template <typename... Arguments>
void Misbehave(Arguments... arguments) {
    std::istringstream action(theAction);
    std::string word;
    action >> word;
    if (word == "crash")
        Crash();
    if (word == "print")
        Print("printed by a driver\n", 20);
    if (word == "exit")
        _exit(0);
    if (word == "throw")
        throw 7;
    if (word == "hang")
        Wait();
    while (word == "flood")
        thePoster(1, 2, 3, 50);
    for (int percent = 1; word == "count"; ++percent) // exceeds 100
        thePoster(1, 2, 3, percent);
    if (word == "silent" || word == "slow") { // for so many milliseconds
        int time = 0;
        action >> time;
        for (int percent = 0; percent < 100; ++percent) {
            std::this_thread::sleep_for(std::chrono::milliseconds(time) / 100);
            if (word == "slow")
                thePoster(1, 2, 3, percent);
        }
    }
    for (int percent = 0; word == "rounds"; percent = (percent + 1) % 101)
        thePoster(1, 2, 3, percent);
    if (word == "forge")
        Forge();
    if (word == "leave")
        Leave();
    if (word == "overrun")
        (Overrun(arguments, std::stoi(theAction.substr(word.size()))), ...);
#ifndef _WIN32
    if (word == "kill-parent") {
        kill(getppid(), SIGKILL);
        Wait();
    }
    if (word == "half") { // half of a transfer, then the program is killed
        theKeyboard->StopTransferAfter(4);
        (void)theKeyboard->QXCFG_ImageSave();
        kill(getppid(), SIGKILL);
        Wait();
    }
    if (word == "terminate") { // also the processes between that one and this one
        int process = 0;
        action >> process;
        for (const pid_t each : {process, getppid(), getpid()})
            kill(each, SIGTERM);
        std::ofstream(theFile + ".here") << "here";
    }
#endif
    if (word == "meet") { // waits for another driver at work at the same time
        std::ofstream(theFile + ".here") << "here";
        action >> word;
        while (!std::ifstream(word))
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

} // namespace

#define QX_DRIVER_FUNCTION(name, parameters, arguments, result)                                    \
    QX_EXPORT std::int32_t name parameters {                                                       \
        if (theAction == "echo")                                                                   \
            return [](auto... each) { return Echo(#name, each...); } arguments;                    \
        if (theAction == "log")                                                                    \
            Log(#name);                                                                            \
        if (theAction == "refuse" && theFunction == #name)                                         \
            return 12;                                                                             \
        if (theFunction == #name || theFunction == "*")                                            \
            [](auto... each) { Misbehave(each...); } arguments;                                    \
        return theKeyboard ? theKeyboard->name arguments : 99;                                     \
    }
#include "qxcontrols/device/DriverFunctions.def"

QX_EXPORT void QXSIM_SetMessagePoster(qx::MessagePoster post) {
    thePoster = post;
    if (theKeyboard)
        theKeyboard->QXSIM_SetMessagePoster(post);
}

QX_EXPORT std::int32_t QXSIM_SetKeyboard(const char* file, const char* model) {
    theFile = file;
    std::istringstream wild(TextIn(theFile + ".wild"));
    wild >> theFunction;
    std::getline(wild >> std::ws, theAction);
    if (theFunction == "QXSIM_SetKeyboard")
        Misbehave();
    try {
        theKeyboard = std::make_unique<qx::sim::SimulatedDriver>(theFile, model);
        theKeyboard->QXSIM_SetMessagePoster(thePoster);
    } catch (const std::exception&) {
        return 31;
    }
    return 0;
}

QX_EXPORT std::int32_t QXSIM_StatusText(std::int32_t status, char* text, std::int32_t size) {
    const std::string words = "wild status " + std::to_string(status);
    std::strncpy(text, words.c_str(), static_cast<std::size_t>(size));
    return static_cast<std::int32_t>(words.size());
}
