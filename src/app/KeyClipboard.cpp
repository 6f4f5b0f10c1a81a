#include "app/KeyClipboard.h"

#include "qxcontrols/keys/SequenceText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QMimeData>

namespace qx::app {

namespace {

const QString kMimeType = QStringLiteral("application/x-qxcontrols-sequences+json");
constexpr qsizetype kMostBytes = 1 << 18; // far more than all keys of a keyboard

Sequences FromJson(const QByteArray& json) {
    Sequences sequences;
    for (const QJsonValue& each : QJsonDocument::fromJson(json).array()) {
        std::vector<Byte>& codes = sequences.emplace_back();
        for (const QJsonValue& value : each.toArray()) {
            const int code = value.toInt();
            if (code < 1 || code > 255)
                return {};
            codes.push_back(static_cast<Byte>(code));
        }
    }
    return sequences;
}

Sequences FromText(const QString& text, const QXKeyboardLayoutData& layout) {
    Sequences sequences;
    try {
        for (const QString& line : text.trimmed().split(u'\n'))
            sequences.push_back(ParseSequenceText(line.trimmed().toStdString(), layout));
    } catch (const SequenceTextError&) {
        return {};
    }
    for (const std::vector<Byte>& codes : sequences)
        for (const Byte code : codes)
            if (code == 0) // ends a sequence, and is in none
                return {};
    return sequences;
}

} // namespace

QMimeData* ToMime(const Sequences& sequences, const QXKeyboardLayoutData& layout) {
    QJsonArray all;
    QStringList lines;
    for (const std::vector<Byte>& codes : sequences) {
        QJsonArray one;
        for (const Byte code : codes)
            one.append(code);
        all.append(one);
        lines.append(QString::fromStdString(SequenceToText(codes, layout)));
    }
    auto* data = new QMimeData;
    data->setText(lines.join(u'\n'));
    data->setData(kMimeType, QJsonDocument(all).toJson(QJsonDocument::Compact));
    return data;
}

Sequences FromMime(const QMimeData& data, const QXKeyboardLayoutData& layout) {
    if (data.hasFormat(kMimeType)) {
        const QByteArray json = data.data(kMimeType);
        return json.size() > kMostBytes ? Sequences() : FromJson(json);
    }
    const QString text = data.text();
    return text.trimmed().isEmpty() || text.size() > kMostBytes ? Sequences()
                                                                : FromText(text, layout);
}

} // namespace qx::app
