#include "com/windows/Ambient.h"

namespace qx::com {
namespace {

// Reads the container's property, converted to the type. False if the container does not have it.
bool Read(IDispatch& container, DISPID id, VARTYPE type, OwnedVariant& value) {
    DISPPARAMS none{};
    return SUCCEEDED(container.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET,
                                      &none, &value.Get(), nullptr, nullptr)) &&
           SUCCEEDED(VariantChangeType(&value.Get(), &value.Get(), 0, type));
}

void ReadFlag(IDispatch& container, DISPID id, bool& flag) {
    OwnedVariant value;
    if (Read(container, id, VT_BOOL, value))
        flag = V_BOOL(&value.Get()) != VARIANT_FALSE;
}

void ReadColour(IDispatch& container, DISPID id, COLORREF& colour) {
    OwnedVariant value;
    COLORREF translated = 0;
    if (Read(container, id, VT_I4, value) &&
        SUCCEEDED(
            OleTranslateColor(static_cast<OLE_COLOR>(V_I4(&value.Get())), nullptr, &translated)))
        colour = translated;
}

} // namespace

Ambient AmbientOf(IOleClientSite* site) {
    Ambient ambient;
    const auto container = ComPtr<IUnknown>(site).As<IDispatch>(IID_IDispatch);
    if (!container)
        return ambient;
    ReadFlag(*container.Get(), DISPID_AMBIENT_USERMODE, ambient.isUserMode);
    ReadFlag(*container.Get(), DISPID_AMBIENT_UIDEAD, ambient.isDead);
    ReadColour(*container.Get(), DISPID_AMBIENT_BACKCOLOR, ambient.background);
    ReadColour(*container.Get(), DISPID_AMBIENT_FORECOLOR, ambient.foreground);
    OwnedVariant locale;
    if (Read(*container.Get(), DISPID_AMBIENT_LOCALEID, VT_I4, locale))
        ambient.locale = static_cast<LCID>(V_I4(&locale.Get()));
    OwnedVariant font;
    if (Read(*container.Get(), DISPID_AMBIENT_FONT, VT_DISPATCH, font))
        ambient.font = ComPtr<IUnknown>(V_DISPATCH(&font.Get())).As<IFont>(IID_IFont);
    return ambient;
}

} // namespace qx::com
