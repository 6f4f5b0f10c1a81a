// The members in the registered type library.
#pragma once

#include "com/windows/Com.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace qx::test {

using namespace com;

struct LibraryMember {
    std::string name;
    DISPID id = 0;
    INVOKEKIND kind = INVOKE_FUNC;
    struct Parameter {
        std::string name;
        std::string type;
        VARTYPE variant = VT_EMPTY; // without VT_BYREF; enumerations are VT_I4
        bool byReference = false;
        bool isOptional = false;
        std::string ifMissing; // empty if it is required
    };
    std::vector<Parameter> parameters;
    std::string result;
};

struct LibraryClass {
    std::string name;
    CLSID clsid{};
    std::map<std::string, IID> interfaces; // by name: the default interface and the event interface
    IID eventsIid{};                       // null if there is none
    std::vector<LibraryMember> members;
    std::vector<LibraryMember> events;
};

struct LibraryEnumeration {
    IID iid{};
    std::map<std::string, LONG> values;
};

struct Library {
    GUID id{};
    std::vector<LibraryClass> classes;
    std::map<std::string, LibraryEnumeration> enumerations;
};

// Throws std::runtime_error if it is not registered.
[[nodiscard]] Library RegisteredLibrary();

[[nodiscard]] std::string Narrow(const wchar_t* text);
[[nodiscard]] std::string GuidText(REFGUID guid);

} // namespace qx::test
