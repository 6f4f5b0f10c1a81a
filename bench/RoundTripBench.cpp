// The cost of transferring whole configurations, compared with copying the same bytes by the same
// driver calls.

#include "FilledConfiguration.h"
#include "host/Session.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "support/FakeDriver.h"

#include <benchmark/benchmark.h>

#include <functional>
#include <vector>

namespace {

using namespace qx;

QXKeyboardLayoutData& Layout() {
    static QXKeyboardLayoutData layout;
    if (!layout.Loaded()) {
        layout.SetLayoutPath(QX_LAYOUTS);
        if (!layout.OpenLayoutByName("us.qxl"))
            std::abort();
    }
    return layout;
}

// A keyboard with all modules, in memory, that does not record calls.
class BenchKeyboard : public test::FakeDriver {
public:
    // nPercent of its slots are filled.
    explicit BenchKeyboard(int nPercent) {
        notesCalls = false;
        directory = {{MODULE_MAGNET_CONFIG, 0x1000},         {MODULE_BARCODE_CONFIG, 0x1100},
                     {MODULE_BARCODE_HEADERS, 0x1200},       {MODULE_MAGNET_HEADERS, 0x1300},
                     {MODULE_FREEPROGRAMMABLE_KEYS, 0x2000}, {MODULE_POS, 0x4000},
                     {MODULE_LAYERED_FUNCKEYS, 0x8000},      {MODULE_GUID, 0x10000}};
        host::Session session(*this);
        session.Open();
        host::Configuration configuration(Platform(), &Layout(), nullptr);
        auto sections = session.SectionsIn(configuration);
        session.Upload(sections);
        bench::Fill(configuration, nPercent, 30);
        session.Download(sections);
    }
};

// Forwards calls and records how to repeat them, with its own buffers.
class Recorder : public host::ForwardingDriver {
public:
    explicit Recorder(ConfigDriver& inner) : ForwardingDriver(inner), m_inner(inner) {}

    std::vector<std::function<void()>> calls;

    std::int32_t QXCFG_ImageRead(std::int32_t lAddress, char* buffer, std::int32_t lSize) override {
        calls.emplace_back(
            [this, lAddress, lSize] { m_inner.QXCFG_ImageRead(lAddress, m_buffer.data(), lSize); });
        return m_inner.QXCFG_ImageRead(lAddress, buffer, lSize);
    }
    std::int32_t QXCFG_ImageWrite(std::int32_t lAddress, const char* buffer,
                                  std::int32_t lSize) override {
        calls.emplace_back([this, lAddress, lSize] {
            m_inner.QXCFG_ImageWrite(lAddress, m_buffer.data(), lSize);
        });
        return m_inner.QXCFG_ImageWrite(lAddress, buffer, lSize);
    }
    std::int32_t QXCFG_ImageReadInt(std::int32_t lAddress, std::int16_t* value) override {
        calls.emplace_back([this, lAddress] { m_inner.QXCFG_ImageReadInt(lAddress, &m_int); });
        return m_inner.QXCFG_ImageReadInt(lAddress, value);
    }
    std::int32_t QXCFG_ImageWriteInt(std::int32_t lAddress, std::int16_t value) override {
        calls.emplace_back([this, lAddress] { m_inner.QXCFG_ImageWriteInt(lAddress, m_int); });
        return m_inner.QXCFG_ImageWriteInt(lAddress, value);
    }
    std::int32_t QXCFG_MemRequestAdd(std::int16_t nModule, std::int32_t lAddress,
                                     std::int32_t lSize) override {
        calls.emplace_back([this, nModule, lAddress, lSize] {
            m_inner.QXCFG_MemRequestAdd(nModule, lAddress, lSize);
        });
        return m_inner.QXCFG_MemRequestAdd(nModule, lAddress, lSize);
    }
    std::int32_t QXCFG_MemRequestClean() override {
        calls.emplace_back([this] { m_inner.QXCFG_MemRequestClean(); });
        return m_inner.QXCFG_MemRequestClean();
    }
    std::int32_t QXCFG_ImageLoad() override {
        calls.emplace_back([this] { m_inner.QXCFG_ImageLoad(); });
        return m_inner.QXCFG_ImageLoad();
    }
    std::int32_t QXCFG_ImageSave() override {
        calls.emplace_back([this] { m_inner.QXCFG_ImageSave(); });
        return m_inner.QXCFG_ImageSave();
    }

protected:
    std::int32_t Noted(std::string_view, host::DriverResult, std::int32_t result) override {
        return result;
    }

private:
    ConfigDriver& m_inner;
    std::vector<char> m_buffer = std::vector<char>(64000, 'x');
    std::int16_t m_int = 0;
};

void RoundTrip(host::Session& session, std::vector<host::Section*> sections) {
    session.Upload(sections);
    session.Download(sections);
}

void UploadDecodeEncodeDownload(benchmark::State& state) {
    BenchKeyboard keyboard(static_cast<int>(state.range(0)));
    host::Session session(keyboard);
    session.Open();
    host::Configuration configuration(Platform(), &Layout(), nullptr);
    const auto sections = session.SectionsIn(configuration);
    for (auto _ : state)
        RoundTrip(session, sections);
}
BENCHMARK(UploadDecodeEncodeDownload)->Arg(10)->Arg(100)->Unit(benchmark::kMicrosecond);

void SameDriverCallsOnly(benchmark::State& state) {
    BenchKeyboard keyboard(static_cast<int>(state.range(0)));
    Recorder recorder(keyboard);
    host::Session session(recorder);
    session.Open();
    host::Configuration configuration(Platform(), &Layout(), nullptr);
    const auto sections = session.SectionsIn(configuration);
    RoundTrip(session, sections);
    recorder.calls.clear();
    RoundTrip(session, sections);
    const auto calls = recorder.calls;
    for (auto _ : state)
        for (const auto& call : calls)
            call();
    state.counters["calls"] = static_cast<double>(calls.size());
}
BENCHMARK(SameDriverCallsOnly)->Arg(10)->Arg(100)->Unit(benchmark::kMicrosecond);

} // namespace
