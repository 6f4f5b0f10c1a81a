#include "cli/commands/Commands.h"

#include <memory>

namespace qx::cli {

namespace {

void SelectLayer(Context& context, Integer nLayer) {
    host::Session& session = context.Keyboard();
    if (!session.Access().HasItem(MODULE_LAYERED_FUNCKEYS))
        throw host::Error(host::Cause::NoLayers);
    session.Run(host::Error(host::Cause::LayerNotSelected),
                [&] { session.Access().SelectFunctionKeyLayer(nLayer); });
    context.CloseKeyboard();
    context.Result({{"layer", nLayer}}, {"layer " + std::to_string(nLayer) + " is selected"});
}

} // namespace

Command LayerCommand() {
    const auto layer = std::make_shared<Integer>(Integer{0});
    return {
        .name = "layer",
        .summary = "Select the layer of the function keys",
        .options = {{.name = "N",
                     .target = layer.get(),
                     .summary = "The layer, 0 to 9",
                     .isRequired = true,
                     .range = {{0, 9}}}},
        .footer = "Example:\n  qxconf layer 3",
        .run = [layer](Context& context) { SelectLayer(context, *layer); },
    };
}

} // namespace qx::cli
