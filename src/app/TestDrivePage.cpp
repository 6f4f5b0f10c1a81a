#include "app/TestDrivePage.h"

#include "app/Failure.h"
#include "app/LayoutCaps.h"
#include "app/PreferenceTab.h"
#include "app/SettingWords.h"
#include "app/TestDriveTexts.h"
#include "app/sections/Entries.h"
#include "qxcontrols/keyprog/FuncKeyLayer.h"
#include "qxcontrols/keyprog/QXLayeredFuncKeys.h"
#include "qxcontrols/keys/KeyName.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "views/Bindings.h"
#include "views/RowPlace.h"
#include "views/ScrollArea.h"
#include "views/SentTexts.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QEvent>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

namespace qx::app {

using views::ToQt;

namespace {

constexpr int kLeft = 392;       // of the window's height, to all but the keys
constexpr int kMostLines = 2000; // of the log
constexpr int kLeastLines = 2;   // of the log
constexpr int kRoomForData = 48; // characters of a card or a code

KeySequence SequenceOf(const sim::Stretch& stretch) {
    KeySequence sequence;
    for (const sim::KeyStroke& stroke : stretch.keys)
        sequence.AddByte(static_cast<Integer>(stroke.key + (stroke.isReleased ? kRelease : 0)));
    return sequence;
}

// Marks the cap of a key with a sequence: in this color, with its name above what it sends.
void ShowSent(views::KeyCap& cap, const sim::Reception& reception, views::SentTexts& texts,
              const QColor& color) {
    cap.state = views::KeyState::Empty;
    if (reception.stretches.empty() ||
        reception.stretches.front().origin == sim::Origin::OrdinaryKey)
        return;
    const KeySequence sent = SequenceOf(reception.stretches.front());
    cap.state = views::KeyState::Programmed;
    cap.color = color;
    cap.legend = cap.caption;
    cap.caption = texts.Brief(sent);
    cap.toolTip += (cap.toolTip.isEmpty() ? QString() : QStringLiteral("\n")) + texts.Whole(sent);
    cap.name = TestDrivePage::tr("%1, programmed: %2").arg(cap.name, texts.Whole(sent));
}

// A description is shown in place of what a function key sends, as on the key's own page.
void Describe(views::KeyCap& cap, const QString& description) {
    if (description.isEmpty())
        return;
    if (cap.legend.isEmpty())
        cap.legend = cap.caption;
    cap.caption = description;
    cap.toolTip = description + (cap.toolTip.isEmpty() ? QString() : u'\n' + cap.toolTip);
    cap.name += QStringLiteral(", ") + description;
}

void GiveRoom(QLineEdit& data) {
    data.setMinimumWidth(data.fontMetrics().averageCharWidth() * kRoomForData);
}

} // namespace

TestDrivePage::TestDrivePage(Workbench& workbench, QWidget* parent)
    : QWidget(parent), m_workbench(workbench), m_keyboard(workbench), m_hint(new QLabel),
      m_sources(new QWidget), m_tabs(new QTabWidget), m_keys(new views::KeyGrid),
      m_layers(new QTabBar), m_functionKeys(new views::KeyGrid), m_tracks{},
      m_received(new QPlainTextEdit) {
    m_hint->setWordWrap(true);
    m_tabs->addTab(MakeKeysTab(), tr("Ke&ys"));
    m_tabs->addTab(MakeFunctionKeysTab(), tr("Layered &function keys"));
    m_tabs->addTab(MakeCardTab(), tr("C&ard"));
    m_tabs->addTab(MakeCodeTab(), tr("&Barcode"));
    m_received->setObjectName(QStringLiteral("received"));
    m_received->setReadOnly(true);
    m_received->setTabChangesFocus(true);
    m_received->setMaximumBlockCount(kMostLines);
    m_received->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_received->setMinimumHeight(kLeastLines * m_received->fontMetrics().lineSpacing());
    m_sources->setLayout(MakeSources());

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->addWidget(m_hint);
    column->addWidget(m_sources);
    column->addWidget(m_tabs);
    column->addLayout(MakeLogRow());
    column->addWidget(m_received, 1);
    const auto showLater = [this] { // the workbench is still at work
        QMetaObject::invokeMethod(this, &TestDrivePage::ShowKeyboard, Qt::QueuedConnection);
    };
    const auto forgetKeyboard = [this, showLater] {
        m_keyboard.ForgetKeyboard();
        showLater();
    };
    connect(&workbench, &Workbench::KeyboardChanged, this, forgetKeyboard);
    connect(&workbench, &Workbench::Held, this, forgetKeyboard);
    connect(&workbench, &Workbench::DocumentChanged, this, [this, showLater] {
        m_keyboard.ForgetDocument();
        showLater();
    });
    ShowKeyboard();
}

bool TestDrivePage::event(QEvent* event) {
    const bool isDone = QWidget::event(event);
    if (event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest)
        for (auto* grid : {m_keys, m_functionKeys}) {
            const QMargins around = grid->parentWidget()->layout()->contentsMargins();
            grid->setFixedHeight(grid->HeightAt(
                views::WidthWithoutBar(*this) - around.left() - around.right(), kLeft));
        }
    return isDone;
}

void TestDrivePage::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    ShowKeyboard();
}

QLayout* TestDrivePage::MakeSources() {
    auto* row = new QHBoxLayout;
    row->setContentsMargins({});
    row->addWidget(new QLabel(tr("Try:")));
    const auto add = [&](const char* name, const QString& text, TestedKeyboard::Source source) {
        auto* button = new QRadioButton(text);
        button->setObjectName(QLatin1String(name));
        row->addWidget(button);
        connect(button, &QRadioButton::toggled, this, [this, source](bool isOn) {
            if (!isOn)
                return;
            m_keyboard.Use(source);
            ShowKeyboard();
        });
        return button;
    };
    add("tryDocument", tr("the document, &not yet written"), TestedKeyboard::Source::Document)
        ->setChecked(true);
    add("tryKeyboard", tr("what the keyboard h&olds"), TestedKeyboard::Source::Keyboard);
    row->addStretch(1);
    return row;
}

QLayout* TestDrivePage::MakeLogRow() {
    auto* caption = new QLabel(tr("The PC recei&ves:"));
    caption->setBuddy(m_received);
    auto* copy = new QPushButton(tr("Co&py"));
    copy->setObjectName(QStringLiteral("copyLog"));
    copy->setToolTip(tr("Copies the whole log"));
    connect(copy, &QPushButton::clicked, this,
            [this] { QApplication::clipboard()->setText(m_received->toPlainText()); });
    auto* clear = new QPushButton(tr("&Clear"));
    clear->setObjectName(QStringLiteral("clearLog"));
    clear->setToolTip(tr("Empties the log"));
    connect(clear, &QPushButton::clicked, m_received, &QPlainTextEdit::clear);
    auto* row = new QHBoxLayout;
    row->addWidget(caption);
    row->addStretch(1);
    row->addWidget(copy);
    row->addWidget(clear);
    return row;
}

QWidget* TestDrivePage::MakeKeysTab() {
    m_keys->setObjectName(QStringLiteral("testDriveKeys"));
    m_keys->setAccessibleName(tr("Keys of the keyboard"));
    connect(m_keys, &views::KeyGrid::KeyPicked, this, [this](int index) {
        const auto key = static_cast<Integer>(index);
        Try(tr("Pressed and released key %1").arg(ToQt(KeyName(key, &m_workbench.Layout()))),
            [key](const sim::TestDrive& drive) {
                sim::Reception reception = drive.PressKey(key);
                reception.Append(drive.ReleaseKey(key));
                return reception;
            });
    });
    auto* tab = new QWidget;
    auto* column = new QVBoxLayout(tab);
    column->addWidget(m_keys);
    column->addStretch(1);
    return tab;
}

QWidget* TestDrivePage::MakeFunctionKeysTab() {
    auto* caption = new QLabel(tr("&Layer:"));
    caption->setBuddy(m_layers);
    m_layers->setObjectName(QStringLiteral("testLayers"));
    m_layers->setAccessibleName(tr("Layer"));
    m_layers->setExpanding(false);
    for (int layer = 0; layer < kFuncKeyLayers; ++layer)
        m_layers->addTab(QString::number(layer));
    connect(m_layers, &QTabBar::currentChanged, this, [this] {
        WithDrive([this](const sim::TestDrive& drive) { ShowFunctionKeys(drive); });
    });
    m_functionKeys->setObjectName(QStringLiteral("testFunctionKeys"));
    m_functionKeys->setAccessibleName(tr("Function keys"));
    connect(m_functionKeys, &views::KeyGrid::KeyPicked, this, [this](int index) {
        const auto nLayer = static_cast<Integer>(m_layers->currentIndex());
        const auto nKey = static_cast<Integer>(index);
        Try(tr("Pressed layer %1, %2").arg(nLayer).arg(ToQt(FuncKeyLegend(nKey))),
            [=](const sim::TestDrive& drive) { return drive.PressFunctionKey(nLayer, nKey); });
    });
    auto* tab = new QWidget;
    auto* layers = new QHBoxLayout;
    layers->addWidget(caption);
    layers->addWidget(m_layers);
    layers->addStretch(1);
    auto* column = new QVBoxLayout(tab);
    column->addLayout(layers);
    column->addWidget(m_functionKeys);
    column->addStretch(1);
    return tab;
}

QWidget* TestDrivePage::MakeCardTab() {
    auto* tab = new QWidget;
    auto* form = NewForm(tab);
    for (std::size_t i = 0; i < m_tracks.size(); ++i) {
        m_tracks[i] = new QLineEdit;
        m_tracks[i]->setObjectName(views::ChildName("track", static_cast<int>(i + 1)));
        m_tracks[i]->setPlaceholderText(tr("no data"));
        GiveRoom(*m_tracks[i]);
        form->addRow(tr("Track %1:").arg(i + 1), m_tracks[i]);
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
    form->addRow(QString(), swipe);
    return tab;
}

QWidget* TestDrivePage::MakeCodeTab() {
    auto* symbology = new QComboBox;
    symbology->setObjectName(QStringLiteral("codeKind"));
    for (std::size_t i = BP_EAN; i < kBarcodePageNames.size(); ++i)
        symbology->addItem(WordOf(kBarcode, kBarcodePageNames[i]));
    auto* data = new QLineEdit(QStringLiteral("2000000000015"));
    data->setObjectName(QStringLiteral("codeData"));
    GiveRoom(*data);
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
    connect(data, &QLineEdit::returnPressed, scan, &QPushButton::click);
    auto* tab = new QWidget;
    auto* form = NewForm(tab);
    form->addRow(tr("K&ind of code:"), symbology);
    form->addRow(tr("Da&ta:"), data);
    form->addRow(tr("&Reader:"), reader);
    form->addRow(QString(), scan);
    return tab;
}

// While another page is shown, nothing is read.
void TestDrivePage::ShowKeyboard() {
    const bool isConnected = m_workbench.IsConnected();
    m_hint->setText(isConnected
                        ? tr("Press keys, swipe cards and scan codes on a copy of the keyboard. "
                             "It follows the rules of the simulated keyboard; the keyboard itself "
                             "is only read.")
                        : tr("Testing needs a keyboard. Choose the simulated one in the Keyboard "
                             "menu."));
    m_sources->setEnabled(isConnected);
    m_tabs->setEnabled(isConnected);
    if (!isConnected || !isVisible() || m_workbench.IsBusy())
        return;
    WithDrive([this](const sim::TestDrive& drive) {
        ShowKeys(drive);
        ShowFunctionKeys(drive);
    });
}

void TestDrivePage::ShowKeys(const sim::TestDrive& drive) {
    const QXKeyboardLayoutData& layout = m_workbench.Layout();
    const QColor programmed = views::ToQColor(m_workbench.Preferences().ColorProg());
    const QColor empty = views::ToQColor(m_workbench.Preferences().ColorEmpty());
    views::SentTexts texts(&layout);
    std::vector<views::KeyCap> caps = LayoutCaps(layout);
    for (views::KeyCap& cap : caps) {
        cap.color = empty;
        ShowSent(cap, drive.PressKey(static_cast<Integer>(cap.index)), texts, programmed);
    }
    m_keys->SetPointSize(m_workbench.Preferences().KeyFontSize());
    m_keys->SetKeys(std::move(caps));
}

void TestDrivePage::ShowFunctionKeys(const sim::TestDrive& drive) {
    views::SentTexts texts(&m_workbench.Layout());
    const QColor programmed = views::ToQColor(m_workbench.Preferences().ColorProg());
    const QColor empty = views::ToQColor(m_workbench.Preferences().ColorEmpty());
    const auto nLayer = static_cast<Integer>(m_layers->currentIndex());
    const QXLayeredFuncKeys& keys = m_keyboard.FunctionKeys();
    for (Integer layer = 0; layer < kFuncKeyLayers; ++layer) {
        const Integer sent = keys.Layer(layer).CountProgrammed();
        const QString number = QString::number(layer);
        m_layers->setTabText(layer,
                             sent > 0 ? QStringLiteral("%1 (%2)").arg(number).arg(sent) : number);
    }
    std::vector<views::KeyCap> caps;
    for (Integer nKey = 0; nKey < FuncKeyLayer::kKeys; ++nKey) {
        views::KeyCap cap;
        cap.index = nKey;
        cap.place = views::RowPlace(kFuncKeyRows, nKey);
        cap.caption = ToQt(FuncKeyLegend(nKey));
        cap.name = cap.caption;
        cap.color = empty;
        ShowSent(cap, drive.PressFunctionKey(nLayer, nKey), texts, programmed);
        Describe(cap, ToQt(keys.Layer(nLayer).GetKeyDesc(nKey)));
        caps.push_back(std::move(cap));
    }
    m_functionKeys->SetPointSize(m_workbench.Preferences().KeyFontSize());
    m_functionKeys->SetKeys(std::move(caps));
}

void TestDrivePage::WithDrive(const std::function<void(const sim::TestDrive& drive)>& use) {
    try {
        use(m_keyboard.Drive());
    } catch (const host::Error& error) {
        m_hint->setText(FailureOf(tr("The keyboard could not be copied."), error).text);
    }
}

void TestDrivePage::Try(const QString& what, const Trial& trial) {
    WithDrive([&](const sim::TestDrive& drive) {
        const QString entry = what + QLatin1Char('\n') + TextOf(trial(drive));
        const bool isFirst = m_received->document()->isEmpty();
        m_received->appendPlainText(isFirst ? entry : QLatin1Char('\n') + entry);
        m_received->moveCursor(QTextCursor::End);
        QTextCursor begin = m_received->textCursor(); // visible even if the end does not fit
        begin.setPosition(begin.position() - static_cast<int>(entry.size()));
        m_received->setTextCursor(begin);
    });
}

QString TestDrivePage::TextOf(const sim::Reception& reception) const {
    const QXKeyboardLayoutData& layout = m_workbench.Layout();
    const SequenceItems items(layout);
    QStringList lines;
    for (const sim::Stretch& stretch : reception.stretches) {
        const QString keys = ToQt(sim::ContentText(stretch, layout));
        const auto codes = sim::CodesOf(stretch);
        const QString typed = codes ? ToQt(items.Text(*codes)) : keys;
        lines.append(QStringLiteral("  %1: %2")
                         .arg(OriginTextOf(stretch, m_workbench.Configuration(), layout),
                              typed == keys ? keys : QStringLiteral("%1  (%2)").arg(typed, keys)));
    }
    if (reception.stretches.empty())
        lines.append(QStringLiteral("  ") + tr("nothing"));
    else if (reception.outputDelay)
        lines.append(tr("Output delay: %1").arg(*reception.outputDelay));
    for (const sim::Remark& remark : reception.remarks)
        lines.append(RemarkTextOf(remark));
    return lines.join(QLatin1Char('\n'));
}

} // namespace qx::app
