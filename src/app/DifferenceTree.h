// DifferenceTree: settings that differ, by section, with both values; each leads to its page.
#pragma once

#include "host/Configuration.h"

#include <QString>
#include <QTreeWidget>

#include <string>
#include <vector>

namespace qx::app {

class DifferenceTree : public QTreeWidget {
    Q_OBJECT
public:
    // The titles of the columns of values.
    DifferenceTree(const std::vector<host::Difference>& differences, const QString& from,
                   const QString& to, QWidget* parent = nullptr);

    // Shows these differences in place of the others.
    void Fill(const std::vector<host::Difference>& differences);

signals:
    void Chosen(const std::string& place);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void FitColumns();
};

} // namespace qx::app
