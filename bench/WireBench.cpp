// The data transferred to and from a keyboard with every module, for changes of several sizes:
// requests and bytes, sent and read, of a complete download with its plan, check and verification.

#include "host/ForwardingDriver.h"
#include "host/Writer.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "simulator/SimulatedDriver.h"
#include "support/TempFolder.h"

#include <cstdio>
#include <cstdlib>

namespace {

using namespace qx;
using host::Json;

struct Traffic {
    int transfers = 0;
    int requests = 0;
    long bytes = 0;
};

// Forwards calls and counts the transferred bytes.
class Counter : public host::ForwardingDriver {
public:
    using ForwardingDriver::ForwardingDriver;

    Traffic sent, read;

    std::int32_t QXCFG_MemRequestClean() override {
        m_requested = {};
        return ForwardingDriver::QXCFG_MemRequestClean();
    }
    std::int32_t QXCFG_MemRequestAdd(std::int16_t nModule, std::int32_t lAddress,
                                     std::int32_t lSize) override {
        ++m_requested.requests;
        m_requested.bytes += lSize;
        return ForwardingDriver::QXCFG_MemRequestAdd(nModule, lAddress, lSize);
    }
    std::int32_t QXCFG_ImageSave() override {
        Count(sent);
        return ForwardingDriver::QXCFG_ImageSave();
    }
    std::int32_t QXCFG_ImageLoad() override {
        Count(read);
        return ForwardingDriver::QXCFG_ImageLoad();
    }

protected:
    std::int32_t Noted(std::string_view, host::DriverResult, std::int32_t result) override {
        return result;
    }

private:
    void Count(Traffic& traffic) const {
        ++traffic.transfers;
        traffic.requests += m_requested.requests;
        traffic.bytes += m_requested.bytes;
    }
    Traffic m_requested;
};

// A keyboard of model "full", and one download to it.
class Wire {
public:
    Wire() {
        m_layout.SetLayoutPath(QX_LAYOUTS);
        if (!m_layout.OpenLayoutByName("us.qxl"))
            std::abort();
    }

    // Downloads the keyboard's own document after `change`.
    void Download(const char* name, bool isFull, const std::function<void(Json&)>& change) {
        Run(name, isFull, [&](host::Session& session, host::Configuration& configuration) {
            auto sections = session.SectionsIn(configuration);
            session.Upload(sections);
            Json json = configuration.Write(sections).AsJson();
            change(json);
            return configuration.Read(host::ConfigurationDocument::Parse(json.dump(), name));
        });
    }
    // Downloads the default settings to a keyboard whose bytes all differ from them.
    void DownloadAll(const char* name, bool isFull) {
        {
            host::Session session(m_driver);
            session.Open();
            host::Configuration configuration(Platform(), &m_layout, nullptr);
            for (const auto& piece : session.ReadContent(configuration).pieces) {
                std::string bytes = piece.bytes;
                for (char& byte : bytes)
                    byte = static_cast<char>(byte ^ 0x55);
                m_driver.Poke(piece.address, bytes);
            }
        }
        Run(name, isFull, [&](host::Session& session, host::Configuration& configuration) {
            return session.SectionsIn(configuration);
        });
    }

private:
    template <typename Settings>
    void Run(const char* name, bool isFull, Settings settings) {
        Counter counter(m_driver);
        host::Session session(counter);
        session.Open();
        host::Configuration configuration(Platform(), &m_layout, nullptr);
        const auto sections = settings(session, configuration);
        counter.sent = counter.read = {};
        host::Writer writer(session, {m_folder / "records", [&] {
                                          return std::make_unique<host::Configuration>(
                                              Platform(), &m_layout, nullptr);
                                      }});
        host::Writer::Request request;
        request.document = name;
        request.full = isFull;
        (void)writer.Write(writer.Plan(sections, {.full = isFull, .repair = true}), request);
        session.Close();
        std::printf("| %s | %d | %ld | %d | %d | %ld |\n", name, counter.sent.requests,
                    counter.sent.bytes, counter.read.transfers, counter.read.requests,
                    counter.read.bytes);
    }

    test::TempFolder m_folder{test::TempFolder::InMemory()};
    sim::SimulatedDriver m_driver{m_folder / "keyboard.qxk", "full"};
    QXKeyboardLayoutData m_layout;
};

} // namespace

int main() {
    const auto changeKey = [](Json& json) {
        json["freeProgKeys"]["keys"] = {{{"positionCode", 112}, {"sequence", {30, 158}}}};
    };
    const auto changeLongKey = [](Json& json) {
        json["layeredFuncKeys"]["keys"] = {{{"layer", 0},
                                            {"key", 3},
                                            {"sequence", std::vector<int>(128, 30)},
                                            {"description", std::string(64, 'x')}}};
    };
    const auto changeBlock = [](Json& json) {
        json["pos"]["blocks"] = {{{"slot", 3},
                                  {"blockId", 1},
                                  {"colorId", 0},
                                  {"keys", {3, 4, 10, 11}},
                                  {"sequence", {30, 158, 31, 159}}}};
    };
    std::puts("| change | requests sent | bytes sent | readings | requests read | bytes read |");
    std::puts("|---|---|---|---|---|---|");
    Wire().Download("one key", false, changeKey);
    Wire().Download("one function key, as long as they go, with its description", false,
                    changeLongKey);
    Wire().Download("one POS block of four keys", false, changeBlock);
    Wire().DownloadAll("everything", false);
    Wire().Download("one key, full download (`--full`)", true, changeKey);
    Wire().DownloadAll("everything, full download (`--full`)", true);
}
