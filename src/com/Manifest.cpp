#include "com/Manifest.h"

#include "com/Library.h"

#include <sstream>

namespace qx::com {
namespace {

// The system's own proxy for interfaces that are called through IDispatch.
constexpr std::string_view kDispatchProxy = "{00020420-0000-0000-C000-000000000046}";

std::string_view MiscStatus(Look look) {
    switch (look) {
    case Look::None:
        return "";
    case Look::Invisible:
        return "recomposeonresize,cantlinkinside,insideout,activatewhenvisible,"
               "setclientsitefirst,invisibleatruntime";
    case Look::Visible:
        return "recomposeonresize,cantlinkinside,insideout,activatewhenvisible,"
               "setclientsitefirst";
    }
    throw std::logic_error("a look without a status");
}

void WriteClass(std::ostream& out, const Class& type) {
    out << "    <comClass clsid=\"" << type.clsid << "\" progid=\"" << kLibraryName << "."
        << type.name << "\"\n              tlbid=\"" << kLibraryId
        << "\" threadingModel=\"Apartment\"";
    if (type.look != Look::None)
        out << "\n              miscStatusContent=\"" << MiscStatus(type.look) << "\"";
    out << "/>\n";
}

void WriteInterface(std::ostream& out, std::string_view iid, std::string_view prefix,
                    std::string_view name) {
    out << "  <comInterfaceExternalProxyStub name=\"" << prefix << name << "\" iid=\"" << iid
        << "\"\n      tlbid=\"" << kLibraryId << "\" proxyStubClsid32=\"" << kDispatchProxy
        << "\"/>\n";
}

} // namespace

std::string ManifestText() {
    std::ostringstream out;
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
           "<assembly xmlns=\"urn:schemas-microsoft-com:asm.v1\" manifestVersion=\"1.0\">\n"
           "  <assemblyIdentity type=\"win32\" name=\""
        << kLibraryName << "\" version=\"" << kLibraryVersion << ".0.0\"/>\n"
        << "  <file name=\"" << kLibraryName << ".ocx\">\n    <typelib tlbid=\"" << kLibraryId
        << "\" version=\"" << kLibraryVersion << "\" helpdir=\"\"/>\n";
    for (const Class* type : Classes())
        WriteClass(out, *type);
    out << "  </file>\n";
    for (const Class* type : Classes()) {
        WriteInterface(out, type->iid, "_", type->name);
        if (!type->eventsIid.empty())
            WriteInterface(out, type->eventsIid, "__", type->name);
    }
    out << "</assembly>\n";
    return std::move(out).str();
}

} // namespace qx::com
