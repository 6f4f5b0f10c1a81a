// The drawing of captions on keys.

#include "com/windows/KeysDrawing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace qx::test {
namespace {

using namespace com;

// The extent of the ink of the only key's caption.
struct Ink {
    int left, right, lines, height;
};

Ink InkOf(const char* caption, int width, int height) {
    BITMAPINFO info{};
    info.bmiHeader = {sizeof(info.bmiHeader), width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    const HDC context = CreateCompatibleDC(nullptr);
    const HBITMAP bitmap = CreateDIBSection(context, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HGDIOBJ earlier = SelectObject(context, bitmap);
    const HFONT font = CreateFontW(-16, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET, 0,
                                   0, NONANTIALIASED_QUALITY, 0, L"Tahoma");
    KeyCap key;
    key.width = static_cast<Single>(width);
    key.height = static_cast<Single>(height);
    key.caption = caption;
    key.color = 0xFFFFFF;
    PartState state;
    state.keys = {key};
    DrawKeys(context, {0, 0, width, height}, state, {font});
    GdiFlush();
    Ink ink{width, -1, 0, 0};
    const auto* const pixels = static_cast<const DWORD*>(bits);
    int first = -1;
    bool wasInk = false;
    for (int y = 3; y < height - 3; ++y) { // inside the key's border
        bool isInk = false;
        for (int x = 3; x < width - 3; ++x)
            if ((pixels[y * width + x] & 0xFFFFFF) == 0) {
                isInk = true;
                ink.left = std::min(ink.left, x);
                ink.right = std::max(ink.right, x);
            }
        if (isInk && !wasInk)
            ++ink.lines;
        if (isInk && first < 0)
            first = y;
        if (isInk)
            ink.height = y - first + 1;
        wasInk = isInk;
    }
    SelectObject(context, earlier);
    DeleteObject(font);
    DeleteObject(bitmap);
    DeleteDC(context);
    return ink;
}

TEST(KeysDrawing, ACaptionIsWrappedAndThenShrunk) {
    const Ink wide = InkOf("NumLock", 120, 60);
    EXPECT_EQ(wide.lines, 1);
    const int length = wide.right - wide.left;
    ASSERT_GT(length, 30);

    const int narrow = length * 3 / 4;
    const Ink broken = InkOf("NumLock", narrow, 60);
    EXPECT_EQ(broken.lines, 2);
    EXPECT_GT(broken.left, 3);
    EXPECT_LT(broken.right, narrow - 4);
    EXPECT_GT(broken.height, 2 * wide.height); // no smaller than before

    const int least = length / 2;
    const Ink smaller = InkOf("NumLock", least, 60);
    EXPECT_EQ(smaller.lines, 2);
    EXPECT_GE(smaller.left, 3);
    EXPECT_LE(smaller.right, least - 4);
    EXPECT_LT(smaller.height, broken.height);
}

} // namespace
} // namespace qx::test
