// Fonts, colours and measures of the faces, and drawing of parts that have no window.
#pragma once

#include "com/faces/Arrangement.h"
#include "com/windows/Ambient.h"

namespace qx::com {

// The container's font, or the system's if it has none.
class FaceFont {
public:
    explicit FaceFont(const Ambient& ambient);
    FaceFont(const FaceFont&) = delete;
    FaceFont& operator=(const FaceFont&) = delete;
    ~FaceFont();

    [[nodiscard]] HFONT Get() const { return m_font; }

private:
    ComPtr<IFont> m_ambient; // which owns its handle
    HFONT m_font = nullptr;
};

// The container's colours, or the system's in high contrast mode.
struct FaceColours {
    explicit FaceColours(const Ambient& ambient);
    bool isHighContrast;
    COLORREF background, text;
};

[[nodiscard]] std::wstring WideFromUtf8(std::string_view text);

// All sizes derive from the font and therefore follow the screen's resolution.
class FontMeasures : public Measures {
public:
    explicit FontMeasures(HFONT font);
    FontMeasures(const FontMeasures&) = delete;
    FontMeasures& operator=(const FontMeasures&) = delete;
    ~FontMeasures() override;

    [[nodiscard]] int WidthOf(const Part& part) const override;
    [[nodiscard]] int HeightOf(const Part& part, int width) const override;
    [[nodiscard]] int Gap() const override { return m_line / 2; }
    [[nodiscard]] int TitleHeight() const override { return m_line; }
    [[nodiscard]] int Line() const { return m_line; }

private:
    [[nodiscard]] int AroundText() const; // above and below the lines of a field
    [[nodiscard]] SIZE SizeOf(const std::string& text, int width, UINT format) const;

    HDC m_screen;
    HGDIOBJ m_earlier;
    int m_line = 0; // pixels
    int m_letter = 0;
};

[[nodiscard]] RECT RectOf(const Place& place);

void FillArea(HDC context, const RECT& area, COLORREF colour);

// The line around a frame; the title is drawn over it.
void DrawFrame(HDC context, const RECT& area, const FontMeasures& measures);
[[nodiscard]] RECT TitleOf(const PlacedPart& frame, const FontMeasures& measures);

// Draws the part as its window would.
void DrawPart(HDC context, const PlacedPart& placed, const FontMeasures& measures,
              const FaceColours& colours, HFONT font);

} // namespace qx::com
