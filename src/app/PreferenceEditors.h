// PreferenceEditors: the editors of the preferences page, each a row of a form.
//
// A change by the user is stored in the preferences at once and reported by Changed. The editors
// have the preferences' property names as object names.
#pragma once

#include "qxcontrols/settings/QXProgSettings.h"

#include <QObject>
#include <QString>

#include <functional>
#include <utility>
#include <vector>

class QFormLayout;
class QSpinBox;

namespace qx::app {

class PreferenceEditors : public QObject {
    Q_OBJECT
public:
    using Choices = std::vector<std::pair<QString, Integer>>;

    // The settings outlive the editors.
    explicit PreferenceEditors(QXProgSettings& settings, QObject* parent = nullptr)
        : QObject(parent), m_settings(settings) {}

    void AddCheck(QFormLayout& form, Preference preference, const QString& text);
    void AddChoice(QFormLayout& form, Preference preference, const QString& label,
                   const Choices& choices);
    void AddNumber(QFormLayout& form, Preference preference, const QString& label, int least,
                   int greatest, const QString& unit = {}, QSpinBox* box = nullptr);
    void AddColour(QFormLayout& form, Preference preference, const QString& label);
    void AddColourSet(QFormLayout& form);
    void AddCodePage(QFormLayout& form);
    void AddStart(QFormLayout& form);
    void AddLastDocument(QFormLayout& form);
    // Something else that shows preferences.
    void AddView(std::function<void()> show) { m_shows.push_back(std::move(show)); }

    // Shows the preferences as they are now.
    void ShowAll();

    // The label of each preference.
    [[nodiscard]] const std::vector<std::pair<Preference, QString>>& Labels() const {
        return m_labels;
    }
    // The object name of its editor.
    [[nodiscard]] static QString NameOf(Preference preference);

signals:
    void Changed(); // by the user

private:
    void NoteLabel(Preference preference, const QString& label);
    void Set(Preference preference, const QXProgSettings::Value& value);
    [[nodiscard]] Long Number(Preference preference) const;
    [[nodiscard]] QString Text(Preference preference) const;

    QXProgSettings& m_settings;
    std::vector<std::function<void()>> m_shows;
    std::vector<std::pair<Preference, QString>> m_labels;
    bool m_isShowing = false;
};

} // namespace qx::app
