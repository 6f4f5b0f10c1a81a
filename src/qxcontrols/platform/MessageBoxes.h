// The host's message boxes.
#pragma once

#include <string_view>

namespace qx {

class MessageBoxes {
public:
    virtual ~MessageBoxes() = default;

    // Shows the text with an OK button and returns when the user has closed it. The default shows
    // nothing: a host that wants message boxes provides its own.
    virtual void Show(std::string_view /*sText*/) {}
};

} // namespace qx
