#include "cli/commands/Commands.h"

#include "cli/PreferenceStore.h"

#include <charconv>
#include <cstdio>
#include <memory>

namespace qx::cli {

namespace {

constexpr struct {
    PreferenceType type;
    const char* name;
} kTypes[] = {
    {PreferenceType::Integer16, "16-bit number"},
    {PreferenceType::Long, "32-bit number"},
    {PreferenceType::Colour, "colour"},
    {PreferenceType::Boolean, "Boolean"},
    {PreferenceType::String, "text"},
};

const char* NameOf(PreferenceType type) {
    for (const auto& each : kTypes)
        if (each.type == type)
            return each.name;
    return "";
}

[[noreturn]] void RefuseValue(const PreferenceInfo& info, const std::string& text,
                              const std::string& expected) {
    throw UsageError("\"" + text + "\" is not a valid " + std::string(info.property) +
                     ": expected " + expected);
}

const PreferenceInfo& Find(const std::string& name) {
    for (const PreferenceInfo& info : Preferences())
        if (info.property == name)
            return info;
    throw UsageError("unknown preference \"" + name + "\" (see qxconf prefs list)");
}

std::vector<std::string> Names(Context&) {
    std::vector<std::string> names;
    for (const PreferenceInfo& info : Preferences())
        names.emplace_back(info.property);
    return names;
}

std::string Shown(const PreferenceInfo& info, const QXProgSettings::Value& value) {
    if (const auto* flag = std::get_if<bool>(&value))
        return *flag ? "True" : "False";
    if (const auto* text = std::get_if<std::string>(&value))
        return *text;
    const Long number = std::get<Long>(value);
    if (info.type != PreferenceType::Colour)
        return std::to_string(number);
    char hexadecimal[11];
    (void)std::snprintf(hexadecimal, sizeof hexadecimal, "0x%08X", static_cast<unsigned>(number));
    return hexadecimal;
}

host::Json JsonOf(const QXProgSettings::Value& value) {
    return std::visit([](const auto& held) { return host::Json(held); }, value);
}

QXProgSettings::Value ParseBoolean(const PreferenceInfo& info, const std::string& text) {
    for (const char* word : {"True", "true", "-1", "1"})
        if (text == word)
            return true;
    for (const char* word : {"False", "false", "0"})
        if (text == word)
            return false;
    RefuseValue(info, text, "True or False");
}

QXProgSettings::Value ParseNumber(const PreferenceInfo& info, const std::string& text) {
    const bool isHexadecimal = text.starts_with("0x") || text.starts_with("0X");
    const char* const begin = text.data() + (isHexadecimal ? 2 : 0);
    const char* const end = text.data() + text.size();
    std::int64_t number = 0;
    const auto [stop, error] = std::from_chars(begin, end, number, isHexadecimal ? 16 : 10);
    const bool isColour = info.type == PreferenceType::Colour;
    const std::int64_t most = isColour ? 0xFFFFFFFF : std::numeric_limits<Long>::max();
    if (error != std::errc() || stop != end || (isHexadecimal && *begin == '-') ||
        number < std::numeric_limits<Long>::min() || number > most)
        RefuseValue(info, text, std::string("a ") + NameOf(info.type));
    return static_cast<Long>(static_cast<std::uint32_t>(number));
}

QXProgSettings::Value Parse(const PreferenceInfo& info, const std::string& text) {
    if (info.type == PreferenceType::String)
        return text;
    return info.type == PreferenceType::Boolean ? ParseBoolean(info, text)
                                                : ParseNumber(info, text);
}

void ListPreferences(Context& context) {
    PreferenceStore store(context);
    host::Json json = {{"preferences", host::Json::array()}};
    Lines lines;
    for (const PreferenceInfo& info : Preferences()) {
        const auto value = store.Settings().Get(info.property);
        json["preferences"].push_back(
            {{"name", info.property}, {"type", NameOf(info.type)}, {"value", JsonOf(value)}});
        lines.push_back(std::string(info.property) + " = " + Shown(info, value) + "  (" +
                        NameOf(info.type) + ")");
    }
    context.Result(json, lines);
}

void Get(Context& context, const std::string& name) {
    const PreferenceInfo& info = Find(name);
    const auto value = PreferenceStore(context).Settings().Get(name);
    context.Result({{"name", name}, {"type", NameOf(info.type)}, {"value", JsonOf(value)}},
                   {Shown(info, value)});
}

void Set(Context& context, const std::string& name, const std::string& text) {
    const PreferenceInfo& info = Find(name);
    const auto value = Parse(info, text);
    PreferenceStore store(context);
    try {
        store.Settings().Set(name, value);
    } catch (const std::out_of_range&) {
        RefuseValue(info, text, std::string("a ") + NameOf(info.type));
    }
    store.Save();
    context.Result({{"name", name}, {"type", NameOf(info.type)}, {"value", JsonOf(value)}},
                   {name + " = " + Shown(info, value)});
}

} // namespace

Command PrefsCommand() {
    const auto name = std::make_shared<std::string>();
    const auto value = std::make_shared<std::string>();
    const Option preference = {.name = "NAME",
                               .target = name.get(),
                               .summary = "Its property name",
                               .isRequired = true,
                               .offers = Names};
    return {
        .name = "prefs",
        .summary = "Read and change preferences",
        .footer = "Examples:\n"
                  "  qxconf prefs list\n"
                  "  qxconf prefs get ColorProg\n"
                  "  qxconf prefs set AutoSave False",
        .commands = {{.name = "list",
                      .summary = "List all preferences with their types",
                      .footer = "Examples:\n"
                                "  qxconf prefs list\n"
                                "  qxconf --json prefs list",
                      .run = ListPreferences},
                     {.name = "get",
                      .summary = "Print one preference",
                      .options = {preference},
                      .footer = "Example:\n  qxconf prefs get ColorProg",
                      .run = [name](Context& context) { Get(context, *name); }},
                     {.name = "set",
                      .summary = "Change one preference",
                      .options = {preference,
                                  {.name = "VALUE",
                                   .target = value.get(),
                                   .summary =
                                       "True or False, a number, a colour (0x00BBGGRR), or a text",
                                   .isRequired = true,
                                   .mayBeEmpty = true,
                                   .offers = OfferNothing}},
                      .footer = "Examples:\n"
                                "  qxconf prefs set AutoSave False\n"
                                "  qxconf prefs set ColorProg 0x000000FF",
                      .run = [name, value](Context& context) { Set(context, *name, *value); }}},
    };
}

} // namespace qx::cli
