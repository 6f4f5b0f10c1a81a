// Whatever a driver answers - sizes, ids, addresses, statuses, bytes, lies about transfers -
// nothing crashes, a document that an upload writes is accepted, and after a download that was
// verified the keyboard holds every byte of it.

#include "Fuzz.h"
#include "host/Session.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <array>

namespace {

using namespace qx;

// A driver that gives every call the status 0, or at one call the input's.
class WillingDriver : public ConfigDriver {
public:
#define QX_DRIVER_FUNCTION(name, parameters, arguments, result)                                    \
    std::int32_t name parameters override {                                                        \
        return Take arguments;                                                                     \
    }
#include "qxcontrols/device/DriverFunctions.def"

    int failingCall = 0; // counted from 1
    std::int32_t status = 0;

protected:
    template <typename... Arguments>
    std::int32_t Take(Arguments...) {
        return ++m_calls == failingCall ? status : 0;
    }

private:
    int m_calls = 0;
};

// A keyboard of hostile content: its directory and its bytes are the input's. Accesses outside its
// memory succeed all the same, and are answered with the input's bytes.
class HostileDriver : public WillingDriver {
public:
    explicit HostileDriver(FuzzedDataProvider& input) {
        failingCall = input.ConsumeBool() ? input.ConsumeIntegralInRange(1, 2000) : 0;
        status = input.ConsumeIntegral<std::int32_t>();
        const int entries = input.ConsumeIntegralInRange(0, 20);
        m_directorySize = input.ConsumeBool() ? entries : input.ConsumeIntegral<std::int32_t>();
        m_lyingTransfer = input.ConsumeIntegralInRange(0, 4);
        m_lie = input.ConsumeIntegral<std::uint16_t>();
        for (int i = 0; i < entries; ++i) {
            const auto module = input.ConsumeBool() ? input.ConsumeIntegralInRange(0, 13)
                                                    : input.ConsumeIntegral<std::int32_t>();
            const auto address = input.ConsumeBool() ? input.ConsumeIntegralInRange(-40, 0x20000)
                                                     : input.ConsumeIntegral<std::int32_t>();
            m_directory.push_back({module, address});
        }
        const auto bytes = input.ConsumeRemainingBytes<char>();
        if (!bytes.empty())
            for (std::size_t i = 0; i < m_memory.size(); ++i)
                m_memory[i] = bytes[i % bytes.size()];
    }

    // Whether the keyboard holds all that the image held when it was to be saved last.
    [[nodiscard]] bool HoldsWhatWasSent() const {
        for (std::size_t i = 0; i < m_isWritten.size(); ++i)
            if (m_isWritten[i] && m_memory[i] != m_sent[i])
                return false;
        return true;
    }
    void ForgetWrites() { m_isWritten.assign(kSize, false); }

    std::int32_t QXCFG_ConfigDirectorySize() override { return m_directorySize; }
    std::int32_t QXCFG_ConfigDirectoryGetEntry(std::int16_t nIndex, std::int32_t* module,
                                               std::int32_t* address) override {
        if (!m_directory.empty()) {
            const Stretch& entry =
                m_directory[static_cast<std::uint16_t>(nIndex) % m_directory.size()];
            *module = entry.first;
            *address = entry.second;
        }
        return Take();
    }
    std::int32_t QXCFG_ImageRead(std::int32_t lAddress, char* buffer, std::int32_t lSize) override {
        return Read(lAddress, buffer, lSize);
    }
    std::int32_t QXCFG_ImageWrite(std::int32_t lAddress, const char* buffer,
                                  std::int32_t lSize) override {
        return Write(lAddress, buffer, lSize);
    }
    std::int32_t QXCFG_ImageReadByte(std::int32_t lAddress, std::uint8_t* value) override {
        return Read(lAddress, reinterpret_cast<char*>(value), 1);
    }
    std::int32_t QXCFG_ImageWriteByte(std::int32_t lAddress, std::uint8_t value) override {
        return Write(lAddress, reinterpret_cast<const char*>(&value), 1);
    }
    std::int32_t QXCFG_ImageReadInt(std::int32_t lAddress, std::int16_t* value) override {
        return Read(lAddress, reinterpret_cast<char*>(value), 2);
    }
    std::int32_t QXCFG_ImageWriteInt(std::int32_t lAddress, std::int16_t value) override {
        return Write(lAddress, reinterpret_cast<const char*>(&value), 2);
    }
    std::int32_t QXCFG_ImageReadLong(std::int32_t lAddress, std::int32_t* value) override {
        return Read(lAddress, reinterpret_cast<char*>(value), 4);
    }
    std::int32_t QXCFG_ImageWriteLong(std::int32_t lAddress, std::int32_t value) override {
        return Write(lAddress, reinterpret_cast<const char*>(&value), 4);
    }
    std::int32_t QXCFG_MemRequestClean() override {
        m_requests.clear();
        return Take();
    }
    std::int32_t QXCFG_MemRequestAdd(std::int16_t, std::int32_t lAddress,
                                     std::int32_t lSize) override {
        m_requests.emplace_back(lAddress, lSize);
        return Take();
    }
    std::int32_t QXCFG_ImageLoad() override { return Move(m_memory, m_image); }
    std::int32_t QXCFG_ImageSave() override {
        m_sent = m_image;
        return Move(m_image, m_memory);
    }
    std::int32_t QXCFG_IsPositionMode() override { return m_lie; }
    std::int32_t QXCFG_GetPositionKey() override { return m_lie; }

private:
    static constexpr std::int64_t kSize = 0x20000;
    using Stretch = std::pair<std::int32_t, std::int32_t>; // address and size
    using Bytes = std::string;

    // Hands visit(place in memory, offset) every byte of a stretch; a place is -1 outside memory.
    template <typename Visit>
    static void Walk(std::int64_t address, std::int64_t size, Visit visit) {
        for (std::int64_t offset = 0; offset < size; ++offset) {
            const std::int64_t place = address + offset;
            visit(place >= 0 && place < kSize ? place : -1, offset);
        }
    }

    std::int32_t Read(std::int32_t address, char* to, std::int32_t size) {
        const std::int32_t taken = Take();
        if (taken == 0)
            Walk(address, size, [&](std::int64_t place, std::int64_t offset) {
                to[offset] = m_image[static_cast<std::size_t>(place < 0 ? offset % kSize : place)];
            });
        return taken;
    }

    std::int32_t Write(std::int32_t address, const char* from, std::int32_t size) {
        const std::int32_t taken = Take();
        if (taken == 0)
            Walk(address, size, [&](std::int64_t place, std::int64_t offset) {
                if (place < 0)
                    return;
                m_image[static_cast<std::size_t>(place)] = from[offset];
                m_isWritten[static_cast<std::size_t>(place)] = true;
            });
        return taken;
    }

    // The transfer that lies moves only its first bytes, or all with a bit changed.
    std::int32_t Move(const Bytes& from, Bytes& to) {
        const std::int32_t taken = Take();
        const bool lies = ++m_transfers == m_lyingTransfer;
        std::int64_t moved = 0;
        if (taken == 0)
            for (const auto& [address, size] : m_requests)
                Walk(address, std::min<std::int64_t>(size, kSize),
                     [&](std::int64_t place, std::int64_t) {
                         if (place < 0)
                             return;
                         const auto at = static_cast<std::size_t>(place);
                         if (!lies || moved < m_lie)
                             to[at] = from[at];
                         if (lies && moved == m_lie / 2)
                             to[at] = static_cast<char>(to[at] ^ 1);
                         ++moved;
                     });
        return taken;
    }

    std::int32_t m_directorySize;
    std::vector<Stretch> m_directory; // modules and addresses
    std::vector<Stretch> m_requests;
    Bytes m_memory = Bytes(kSize, '\0'), m_image = Bytes(kSize, '\0'), m_sent = m_image;
    std::vector<bool> m_isWritten = std::vector<bool>(kSize, false);
    int m_transfers = 0, m_lyingTransfer;
    std::int32_t m_lie;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    HostileDriver driver(input);
    try {
        host::Session session(driver);
        session.Open();
        host::Configuration configuration{fuzz::Services(), &fuzz::UsLayout(), nullptr};
        const auto sections = session.SectionsIn(configuration);
        session.Upload(sections);
        const std::string text = configuration.Write(sections, session.Keyboard()).ToText();

        host::Configuration again{fuzz::Services(), &fuzz::UsLayout(), nullptr};
        try {
            const auto read = again.Read(host::ConfigurationDocument::Parse(text, "the upload"));
            fuzz::RequireEqual(again.Write(read, session.Keyboard()).ToText(), text,
                               "the document of an upload reads back the same");
        } catch (const host::Error& error) {
            fuzz::RequireEqual(error.what(), "", "the document of an upload is accepted");
        }
        driver.ForgetWrites();
        session.Download(sections);
        session.VerifyLastDownload();
        fuzz::Require(driver.HoldsWhatWasSent(), "a verified download is in the keyboard");
        session.Close();
    } catch (const host::Error& error) {
        fuzz::Require(*error.what() != '\0', "a failure has a reason");
    }
    return 0;
}
