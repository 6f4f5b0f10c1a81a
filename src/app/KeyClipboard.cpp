#include "app/KeyClipboard.h"

#include "qxcontrols/keys/SequenceText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMimeData>

namespace qx::app {

namespace {

const QString kMimeType = QStringLiteral("application/x-qxcontrols-keys+json");
constexpr qsizetype kMostBytes = 1 << 18; // far more than all keys of a keyboard
const QLatin1String kCodes("codes");
const QLatin1String kDescription("description");

KeyContents FromJson(const QByteArray& json) {
    KeyContents contents;
    for (const QJsonValue& each : QJsonDocument::fromJson(json).array()) {
        if (!each[kCodes].isArray())
            return {};
        KeyEdits::Content& content = contents.emplace_back();
        for (const QJsonValue& value : each[kCodes].toArray()) {
            const int code = value.toInt();
            if (code < 1 || code > 255)
                return {};
            content.codes.push_back(static_cast<Byte>(code));
        }
        if (each[kDescription].isString())
            content.description = each[kDescription].toString().toStdString();
    }
    return contents;
}

KeyContents FromText(const QString& text, const QXKeyboardLayoutData& layout) {
    KeyContents contents;
    try {
        for (const QString& line : text.trimmed().split(u'\n'))
            contents.push_back({ParseSequenceText(line.trimmed().toStdString(), layout)});
    } catch (const SequenceTextError&) {
        return {};
    }
    for (const KeyEdits::Content& content : contents)
        for (const Byte code : content.codes)
            if (code == 0) // ends a sequence, and is in none
                return {};
    return contents;
}

} // namespace

QMimeData* ToMime(const KeyContents& contents, const QXKeyboardLayoutData& layout) {
    QJsonArray all;
    QStringList lines;
    for (const KeyEdits::Content& content : contents) {
        QJsonArray codes;
        for (const Byte code : content.codes)
            codes.append(code);
        QJsonObject one{{kCodes, codes}};
        if (content.description)
            one.insert(kDescription, QString::fromStdString(*content.description));
        all.append(one);
        lines.append(QString::fromStdString(SequenceToText(content.codes, layout)));
    }
    auto* data = new QMimeData;
    data->setText(lines.join(u'\n'));
    data->setData(kMimeType, QJsonDocument(all).toJson(QJsonDocument::Compact));
    return data;
}

KeyContents FromMime(const QMimeData& data, const QXKeyboardLayoutData& layout) {
    if (data.hasFormat(kMimeType)) {
        const QByteArray json = data.data(kMimeType);
        return json.size() > kMostBytes ? KeyContents() : FromJson(json);
    }
    const QString text = data.text();
    return text.trimmed().isEmpty() || text.size() > kMostBytes ? KeyContents()
                                                                : FromText(text, layout);
}

} // namespace qx::app
