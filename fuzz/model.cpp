// A model is refused with the place of the error, or else its areas are separate and inside the
// memory, and its text yields the same model again.

#include "Fuzz.h"
#include "simulator/FixedAreas.h"
#include "simulator/KeyboardModel.h"

#include <set>
#include <stdexcept>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace qx;
    sim::KeyboardModel model;
    try {
        model = sim::KeyboardModel::FromJson(std::string(fuzz::AsText(data, size)));
    } catch (const std::runtime_error& error) {
        fuzz::Require(*error.what() != '\0', "a refusal has a reason");
        return 0;
    }
    fuzz::Require(model.IdentificationBlock().size() ==
                      static_cast<std::size_t>(sim::kIdentification.size),
                  "the identification fills its area");
    std::set<Long> addresses;
    for (const auto& entry : model.directory) {
        fuzz::Require(entry.address >= 0 && entry.address < sim::kMemorySize,
                      "an area begins inside the memory");
        fuzz::Require(addresses.insert(entry.address).second, "two areas do not meet");
        fuzz::Require(!NameOf(entry.module).empty(), "every module is known");
        for (const sim::Area& fixed : sim::kFixedAreas)
            fuzz::Require(entry.address < fixed.address || entry.address >= fixed.End(),
                          "an area meets no fixed place");
    }
    const auto again = sim::KeyboardModel::FromJson(model.json);
    fuzz::Require(again.IdentificationBlock() == model.IdentificationBlock() &&
                      again.capabilities == model.capabilities && again.layout == model.layout &&
                      again.directory.size() == model.directory.size(),
                  "the model's text gives the same model");
    return 0;
}
