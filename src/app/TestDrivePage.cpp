#include "app/TestDrivePage.h"

#include "app/SettingWords.h"
#include "app/TestDriveTexts.h"
#include "app/sections/Entries.h"
#include "qxcontrols/keyprog/FuncKeyLayer.h"
#include "qxcontrols/keyprog/LayeredFuncKeyBlocks.h"
#include "qxcontrols/keys/KeyName.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "simulator/FixedAreas.h"
#include "simulator/SimulatedDriver.h"
#include "views/Bindings.h"

#include <QComboBox>
#include <QFontDatabase>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QVBoxLayout>

namespace qx::app {

using views::ToQt;

TestDrivePage::TestDrivePage(Workbench& workbench, QWidget* parent)
    : QWidget(parent), m_workbench(workbench), m_hint(new QLabel), m_tabs(new QTabWidget),
      m_keys(new views::KeyGrid), m_tracks{}, m_received(new QPlainTextEdit) {
    m_hint->setWordWrap(true);
    m_tabs->addTab(MakeKeysTab(), tr("Ke&ys"));
    m_tabs->addTab(MakeFunctionKeysTab(), tr("&Function keys"));
    m_tabs->addTab(MakeCardTab(), tr("C&ard"));
    m_tabs->addTab(MakeCodeTab(), tr("&Barcode"));
    m_received->setObjectName(QStringLiteral("received"));
    m_received->setReadOnly(true);
    m_received->setTabChangesFocus(true);
    m_received->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    auto* caption = new QLabel(tr("The PC re&ceives"));
    caption->setBuddy(m_received);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->addWidget(m_hint);
    column->addWidget(m_tabs, 3);
    column->addWidget(caption);
    column->addWidget(m_received, 2);
    connect(&workbench, &Workbench::KeyboardChanged, this, &TestDrivePage::ShowKeyboard);
    connect(&workbench, &Workbench::DocumentChanged, this, &TestDrivePage::ShowKeyboard);
    ShowKeyboard();
}

QWidget* TestDrivePage::MakeKeysTab() {
    m_keys->setObjectName(QStringLiteral("testDriveKeys"));
    m_keys->setAccessibleName(tr("Keys of the simulated keyboard"));
    connect(m_keys, &views::KeyGrid::KeyPicked, this, [this](int index) {
        const auto key = static_cast<Integer>(index);
        Try(tr("Pressed and released key %1").arg(ToQt(KeyName(key, &m_workbench.Layout()))),
            [key](const sim::TestDrive& drive) {
                sim::Reception reception = drive.PressKey(key);
                reception.Append(drive.ReleaseKey(key));
                return reception;
            });
    });
    return m_keys;
}

QWidget* TestDrivePage::MakeFunctionKeysTab() {
    auto* layer = new QSpinBox;
    layer->setObjectName(QStringLiteral("functionLayer"));
    layer->setRange(0, kFuncKeyLayers - 1);
    auto* key = new QSpinBox;
    key->setObjectName(QStringLiteral("functionKey"));
    key->setPrefix(QStringLiteral("F"));
    key->setRange(1, FuncKeyLayer::kKeys);
    auto* press = new QPushButton(tr("&Press"));
    press->setObjectName(QStringLiteral("cmdPressFunctionKey"));
    connect(press, &QPushButton::clicked, this, [=, this] {
        const auto nLayer = static_cast<Integer>(layer->value());
        const auto nKey = static_cast<Integer>(key->value() - 1);
        Try(tr("Pressed layer %1 %2").arg(nLayer).arg(QString::fromStdString(FuncKeyLegend(nKey))),
            [=](const sim::TestDrive& drive) { return drive.PressFunctionKey(nLayer, nKey); });
    });
    auto* tab = new QWidget;
    auto* form = new QFormLayout(tab);
    form->addRow(tr("&Layer"), layer);
    form->addRow(tr("F&unction key"), key);
    form->addRow(press);
    return tab;
}

QWidget* TestDrivePage::MakeCardTab() {
    auto* tab = new QWidget;
    auto* form = new QFormLayout(tab);
    for (std::size_t i = 0; i < m_tracks.size(); ++i) {
        m_tracks[i] = new QLineEdit;
        m_tracks[i]->setObjectName(views::ChildName("track", static_cast<int>(i + 1)));
        m_tracks[i]->setPlaceholderText(tr("no data"));
        form->addRow(tr("Track %1").arg(i + 1), m_tracks[i]);
    }
    m_tracks[1]->setText(QStringLiteral("6725900123456789=2712"));
    auto* swipe = new QPushButton(tr("&Swipe the card"));
    swipe->setObjectName(QStringLiteral("cmdSwipe"));
    connect(swipe, &QPushButton::clicked, this, [this] {
        sim::Card card;
        for (std::size_t i = 0; i < card.size(); ++i)
            card[i].data = m_tracks[i]->text().toStdString();
        Try(tr("Swiped a card"),
            [card](const sim::TestDrive& drive) { return drive.SwipeCard(card); });
    });
    form->addRow(swipe);
    return tab;
}

QWidget* TestDrivePage::MakeCodeTab() {
    auto* symbology = new QComboBox;
    symbology->setObjectName(QStringLiteral("codeKind"));
    for (std::size_t i = BP_EAN; i < kBarcodePageNames.size(); ++i)
        symbology->addItem(WordOf(kBarcode, kBarcodePageNames[i]));
    auto* data = new QLineEdit(QStringLiteral("4006381333931"));
    data->setObjectName(QStringLiteral("codeData"));
    auto* reader = new QSpinBox;
    reader->setObjectName(QStringLiteral("codeReader"));
    reader->setRange(1, kBarcodeReaders);
    auto* scan = new QPushButton(tr("&Scan"));
    scan->setObjectName(QStringLiteral("cmdScan"));
    connect(scan, &QPushButton::clicked, this, [=, this] {
        const auto page = static_cast<BarcodePage>(BP_EAN + symbology->currentIndex());
        const auto input = static_cast<Integer>(reader->value());
        const std::string text = data->text().toStdString();
        Try(tr("Scanned a code"),
            [=](const sim::TestDrive& drive) { return drive.ScanCode(input, page, text); });
    });
    auto* tab = new QWidget;
    auto* form = new QFormLayout(tab);
    form->addRow(tr("K&ind of code"), symbology);
    form->addRow(tr("Da&ta"), data);
    form->addRow(tr("&Reader"), reader);
    form->addRow(scan);
    return tab;
}

void TestDrivePage::ShowKeyboard() {
    const bool isSimulated = m_workbench.Simulated() != nullptr;
    m_hint->setText(
        isSimulated
            ? tr("The simulated keyboard answers from its memory: write the document to it first "
                 "to try new settings.")
            : tr("Testing needs the simulated keyboard; choose it in the menu Keyboard."));
    m_tabs->setEnabled(isSimulated);
    const QXKeyboardLayoutData& layout = m_workbench.Layout();
    std::vector<views::KeyCap> caps;
    for (Long id = layout.GetMinKeyID(); id <= layout.GetMaxKeyID(); ++id) {
        if (layout.KeySupport(id) == KEYMODE_NONE)
            continue;
        views::KeyCap cap;
        cap.index = id;
        cap.place = QRectF(
            static_cast<double>(layout.KeyX(id)), static_cast<double>(layout.KeyY(id)),
            static_cast<double>(layout.KeyWidth(id)), static_cast<double>(layout.KeyHeight(id)));
        cap.caption = ToQt(layout.KeyCaption(id));
        cap.toolTip = ToQt(layout.KeyLongCaption(id));
        cap.name = tr("Key %1").arg(ToQt(KeyName(id, &layout)));
        cap.color = palette().color(QPalette::Button);
        cap.state = views::KeyState::Empty;
        caps.push_back(std::move(cap));
    }
    m_keys->SetPointSize(m_workbench.Preferences().KeyFontSize());
    m_keys->SetKeys(std::move(caps));
}

void TestDrivePage::Try(const QString& what, const Trial& trial) {
    const sim::SimulatedDriver& keyboard = *m_workbench.Simulated();
    const sim::TestDrive drive(keyboard.Memory(0, sim::kMemorySize), keyboard.Model(),
                               m_workbench.Layout());
    m_received->setPlainText(what + QLatin1Char('\n') + TextOf(trial(drive)));
}

QString TestDrivePage::TextOf(const sim::Reception& reception) const {
    QString text;
    for (const sim::Stretch& stretch : reception.stretches)
        text += QStringLiteral("  %1: %2\n")
                    .arg(OriginTextOf(stretch, m_workbench.Layout()),
                         ToQt(sim::ContentText(stretch, m_workbench.Layout())));
    if (reception.stretches.empty())
        text += QStringLiteral("  ") + tr("nothing") + QLatin1Char('\n');
    else if (reception.outputDelay)
        text +=
            tr("Output delay between codes: %1").arg(*reception.outputDelay) + QLatin1Char('\n');
    for (const sim::Remark& remark : reception.remarks)
        text += RemarkTextOf(remark) + QLatin1Char('\n');
    return text;
}

} // namespace qx::app
