// ProblemWords: problems with files, programs and libraries in the language of the program.
#pragma once

#include "files/Problem.h"

#include <QString>

namespace qx::app {

// The failed action: "till.json could not be read."; empty where no file is known.
[[nodiscard]] QString DeedText(const files::Problem& problem);
// Why, as a sentence; empty where only the system reported something, or nobody.
[[nodiscard]] QString ObstacleText(const files::Problem& problem);

} // namespace qx::app
