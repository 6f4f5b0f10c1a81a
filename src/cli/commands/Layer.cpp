#include "cli/commands/Commands.h"

#include <memory>

namespace qx::cli {

namespace {

void SelectLayer(Context& context, Integer nLayer) {
    host::Session& session = context.Keyboard();
    if (!session.Access().HasItem(MODULE_LAYERED_FUNCKEYS))
        throw host::Error(host::ErrorKind::TransferFailed,
                          "this keyboard has no layered function keys");
    session.Run("selecting the layer failed",
                [&] { session.Access().SelectFunctionKeyLayer(nLayer); });
    context.CloseKeyboard();
    context.Result({{"layer", nLayer}}, "layer " + std::to_string(nLayer) + " is selected\n");
}

} // namespace

void AddLayer(CLI::App& app, Context& context) {
    CLI::App* command = app.add_subcommand("layer", "Select the layer of the function keys");
    const auto layer = std::make_shared<Integer>(Integer{0});
    command->add_option("N", *layer, "The layer, 0 to 9")->required()->check(CLI::Range(0, 9));
    command->footer("Example:\n  qxconf layer 3");
    command->callback([&context, layer] { SelectLayer(context, *layer); });
}

} // namespace qx::cli
