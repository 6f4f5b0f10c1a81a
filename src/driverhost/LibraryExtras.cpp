#include "driverhost/LibraryExtras.h"

namespace qx::driverhost {

files::Problem ProblemOf(const LibraryError& error, const std::string& library) {
    files::Problem problem = {.deed = files::Deed::Load,
                              .subject = library,
                              .names = error.Functions(),
                              .system = error.Reason()};
    switch (error.Why()) {
    case LibraryError::Kind::Refused:
        break;
    case LibraryError::Kind::Missing:
        problem.obstacle = files::Obstacle::LibraryMissing;
        break;
    case LibraryError::Kind::NotALibrary:
        problem.obstacle = files::Obstacle::NotLoadable;
        break;
    case LibraryError::Kind::LacksFunctions:
        problem.obstacle = files::Obstacle::LacksFunctions;
        break;
    }
    return problem;
}

std::string StatusText(const DriverLibrary& library, std::int32_t lStatus) {
    using Text = std::int32_t(QX_DRIVER_CALL*)(std::int32_t status, char* text, std::int32_t size);
    const auto explain = library.Find<Text>("QXSIM_StatusText");
    if (explain == nullptr)
        return {};
    char text[1000] = "";
    (void)explain(lStatus, text, sizeof text);
    text[sizeof text - 1] = '\0';
    return text;
}

std::optional<std::int32_t> SetKeyboard(const DriverLibrary& library, const std::string& file,
                                        const std::string& model) {
    using Setter = std::int32_t(QX_DRIVER_CALL*)(const char* file, const char* model);
    const auto set = library.Find<Setter>("QXSIM_SetKeyboard");
    if (set == nullptr)
        return std::nullopt;
    return set(file.c_str(), model.c_str());
}

} // namespace qx::driverhost
