// Whatever a driver returns (sizes, ids, addresses, statuses, bytes, false success of transfers),
// nothing crashes, an uploaded document is accepted, and after a write that is reported as done the
// keyboard holds every byte of it.

#include "Fuzz.h"
#include "host/ErrorText.h"
#include "host/Writer.h"
#include "support/TempFolder.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <filesystem>

#include <unistd.h>

namespace {

using namespace qx;

// A driver that returns status 0 for every call, except one call that returns the input's.
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

// A keyboard with hostile content: its directory and bytes come from the input. Accesses outside
// its memory succeed too, with bytes from the input.
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

    // Whether the memory contains these bytes, as far as it extends.
    [[nodiscard]] bool Holds(const host::KeyboardContent& content) const {
        return std::all_of(content.pieces.begin(), content.pieces.end(), [&](const auto& piece) {
            const auto [begin, length] =
                Inside(piece.address, static_cast<std::int64_t>(piece.bytes.size()));
            const auto skipped =
                static_cast<std::size_t>(static_cast<std::int64_t>(begin) - piece.address);
            return length == 0 ||
                   m_memory.compare(begin, length, piece.bytes, skipped, length) == 0;
        });
    }

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
    std::int32_t QXCFG_ImageSave() override { return Move(m_image, m_memory); }
    std::int32_t QXCFG_IsPositionMode() override { return m_lie; }
    std::int32_t QXCFG_GetPositionKey() override { return m_lie; }

private:
    static constexpr std::int64_t kSize = 0x20000;
    using Stretch = std::pair<std::int32_t, std::int32_t>; // address and size

    // The part of a stretch inside the memory: its start and length.
    static std::pair<std::size_t, std::size_t> Inside(std::int64_t address, std::int64_t size) {
        const std::int64_t begin = std::clamp<std::int64_t>(address, 0, kSize);
        const std::int64_t end =
            std::clamp<std::int64_t>(address + std::max<std::int64_t>(size, 0), begin, kSize);
        return {static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin)};
    }

    // Reads outside the memory return bytes from its beginning.
    std::int32_t Read(std::int32_t address, char* to, std::int32_t size) {
        const std::int32_t taken = Take();
        if (taken != 0)
            return taken;
        const auto [begin, length] = Inside(address, size);
        for (std::int64_t done = 0; length < static_cast<std::size_t>(size) && done < size;)
            done += static_cast<std::int64_t>(
                m_image.copy(to + done, static_cast<std::size_t>(size - done)));
        if (length > 0)
            m_image.copy(to + (static_cast<std::int64_t>(begin) - address), length, begin);
        return 0;
    }

    std::int32_t Write(std::int32_t address, const char* from, std::int32_t size) {
        const std::int32_t taken = Take();
        const auto [begin, length] = Inside(address, size);
        if (taken == 0 && length > 0)
            m_image.replace(begin, length, from + (static_cast<std::int64_t>(begin) - address),
                            length);
        return taken;
    }

    // The misreported transfer moves only its first bytes, and changes a bit of one of them.
    std::int32_t Move(const std::string& from, std::string& to) {
        const std::int32_t taken = Take();
        const bool lies = ++m_transfers == m_lyingTransfer;
        std::size_t left = lies ? m_lie : std::string::npos;
        if (taken != 0)
            return taken;
        for (const auto& [address, size] : m_requests) {
            const auto [begin, length] = Inside(address, size);
            const std::size_t moved = std::min(length, left);
            to.replace(begin, moved, from, begin, moved);
            if (lies && moved > 0)
                to[begin] = static_cast<char>(to[begin] ^ 1);
            left -= lies ? moved : 0;
        }
        return 0;
    }

    std::int32_t m_directorySize;
    std::vector<Stretch> m_directory; // modules and addresses
    std::vector<Stretch> m_requests;
    std::string m_memory = std::string(kSize, '\0');
    std::string m_image = m_memory;
    int m_transfers = 0, m_lyingTransfer;
    std::uint16_t m_lie;
};

// A folder for records, deleted by the destructor.
struct NewFolder {
    NewFolder() { std::filesystem::remove_all(path); }
    ~NewFolder() { std::filesystem::remove_all(path); }
    NewFolder(const NewFolder&) = delete;
    NewFolder& operator=(const NewFolder&) = delete;
    std::filesystem::path path =
        test::TempFolder::InMemory() / ("qx-fuzz-" + std::to_string(getpid()));
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    HostileDriver driver(input);
    try {
        host::Session session(driver);
        session.Open();
        host::Configuration configuration{fuzz::Services(), &fuzz::UsLayout(), nullptr};
        auto sections = session.SectionsIn(configuration);
        session.Upload(sections);
        const std::string text = configuration.Write(sections, session.Keyboard()).ToText();

        host::Configuration again{fuzz::Services(), &fuzz::UsLayout(), nullptr};
        (void)session.SectionsIn(again); // marks the sections that the keyboard does not have
        try {
            const auto read = again.Read(host::ConfigurationDocument::Parse(text, "the upload"));
            fuzz::RequireEqual(again.Write(read, session.Keyboard()).ToText(), text,
                               "the document of an upload reads back the same");
        } catch (const host::Error& error) {
            fuzz::RequireEqual(host::TextOf(error), "", "the document of an upload is accepted");
        }
        for (host::Section* section : sections)
            section->Control().DefaultValues();
        const NewFolder folder;
        host::Writer writer(session, {folder.path, [] {
                                          return std::make_unique<host::Configuration>(
                                              fuzz::Services(), &fuzz::UsLayout(), nullptr);
                                      }});
        const host::WritePlan plan = writer.Plan(sections);
        if (writer.Write(plan, {}).isWritten)
            fuzz::Require(driver.Holds(plan.after), "what is called done is in the keyboard");
        session.Close();
    } catch (const host::Error& error) {
        fuzz::Require(!host::TextOf(error).empty(), "a failure has a reason");
    }
    return 0;
}
