// A document that is accepted, written and read again yields the same settings; a refused one
// changes none.

#include "Fuzz.h"
#include "host/Configuration.h"

namespace {

using namespace qx;

std::vector<host::Section*> All(const host::Configuration& configuration) {
    std::vector<host::Section*> all;
    for (const auto& section : configuration.Sections())
        all.push_back(section.get());
    return all;
}

std::string Settings(const host::Configuration& configuration) {
    return configuration.Write(All(configuration)).ToText();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const host::Configuration fresh{fuzz::Services(), &fuzz::UsLayout(), nullptr};
    static const std::string defaults = Settings(fresh);
    try {
        const auto document =
            host::ConfigurationDocument::Parse(fuzz::AsText(data, size), "the input");
        host::Configuration first{fuzz::Services(), &fuzz::UsLayout(), nullptr};
        std::vector<host::Section*> read;
        try {
            read = first.Read(document);
        } catch (const host::Error&) {
            fuzz::RequireEqual(Settings(first), defaults, "a refused document changes nothing");
            return 0;
        }
        const std::string written = first.Write(read).ToText();
        host::Configuration second{fuzz::Services(), &fuzz::UsLayout(), nullptr};
        const auto readAgain = second.Read(host::ConfigurationDocument::Parse(written, "written"));
        fuzz::RequireEqual(second.Write(readAgain).ToText(), written,
                           "what is written and read again is the same");
        fuzz::RequireEqual(Settings(second), Settings(first), "no setting is lost by writing");
        fuzz::Require(host::Compare(first.List(read), second.List(readAgain)).empty(),
                      "the lists of settings do not differ");
    } catch (const host::Error& error) {
        fuzz::Require(error.Kind() == host::ErrorKind::DocumentInvalid,
                      "only an invalid document is refused");
    }
    return 0;
}
