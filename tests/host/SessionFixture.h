// SessionFixture: a driver that records its calls, and a configuration with a layout.
#pragma once

#include "host/ErrorText.h"
#include "host/Session.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "support/FakeDriver.h"

#include <gtest/gtest.h>

namespace qx::host {

class SessionFixture : public testing::Test {
protected:
    SessionFixture() {
        layout.SetLayoutPath(QX_LAYOUTS);
        EXPECT_TRUE(layout.OpenLayoutByName("us.qxl"));
    }

    test::FakeDriver driver;
    QXKeyboardLayoutData layout;
    Configuration configuration{Platform(), &layout, nullptr};
};

} // namespace qx::host
