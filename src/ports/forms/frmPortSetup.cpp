#include "ports/forms/frmPortSetup.h"

#include <QButtonGroup>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTimer>
#include <utility>

#include "platform/qt/Text.h"

namespace kelvora {

namespace {

std::vector<int> ExistingPorts(const Lines& lines)
{
    std::vector<int> ports;
    for (int port = 1; std::cmp_less_equal(port, lines.AllPorts().size()); ++port)
        if (lines.IsAvailable(port))
            ports.push_back(port);
    return ports;
}

}  // namespace

frmPortSetup::frmPortSetup(const Texts& texts, const Lines& lines, PosCfg& settings, QWidget* parent)
    : QDialog(parent), texts_(texts), setup_(ExistingPorts(lines), settings), tabs_(new QTabBar(this))
{
    setObjectName(QStringLiteral("frmPortSetup"));
    setWindowTitle(ToQString(texts.Caption(Message::PortSetupTitle)));
    AddTabs();
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(tabs_);
    layout->addLayout(AddFrames());
    auto* const exit = new QPushButton(ToQString(texts.Caption(Message::Quit)), this);
    exit->setObjectName(QStringLiteral("ExitCommand"));
    exit->setDefault(true);
    connect(exit, &QPushButton::clicked, this, &QDialog::reject);
    layout->addWidget(exit, 0, Qt::AlignRight);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

void frmPortSetup::AddTabs()
{
    tabs_->setObjectName(QStringLiteral("TabStrip1"));
    const QString word = ToQString(texts_.Caption(Message::CommunicationsLine));
    for (const int port : setup_.Tabs())
        tabs_->addTab(word + QString::number(port));
    if (setup_.Tabs().empty())
        tabs_->addTab(word + '?');
    tabs_->setCurrentIndex(static_cast<int>(setup_.Selected()));
    connect(tabs_, &QTabBar::currentChanged, this, &frmPortSetup::TabStrip1_Click);
    connect(tabs_, &QTabBar::tabBarClicked, this, [this](int tab) {
        if (tab == tabs_->currentIndex())
            TabStrip1_Click(tab);
    });
}

QLayout* frmPortSetup::AddFrames()
{
    const auto text = [this](const MessageId& id) { return ToQString(texts_.Caption(id)); };
    auto* const across = new QHBoxLayout;
    baud_ = AddFrame(*across, "BaudRate", Message::BaudRateFrame);
    for (int option = 0; !BaudText(option).empty(); ++option)
        AddOption(*baud_, option, ToQString(BaudText(option)));
    auto* const down = new QVBoxLayout;
    across->addLayout(down);
    parity_ = AddFrame(*down, "Parity", Message::ParityFrame);
    AddOption(*parity_, 1, text(Message::ParityOdd));
    AddOption(*parity_, 2, text(Message::ParityEven));
    AddOption(*parity_, 3, text(Message::ParityNone));
    dataBits_ = AddFrame(*down, "DataBits", Message::DataBitsFrame);
    stopBits_ = AddFrame(*down, "StopBits", Message::StopBitsFrame);
    for (const int bits : {7, 8})
        AddOption(*dataBits_, bits, QString::number(bits));
    for (const int bits : {1, 2})
        AddOption(*stopBits_, bits, QString::number(bits));
    OnChoice(*baud_, &PortSetup::ChooseBaud);
    OnChoice(*parity_, &PortSetup::ChooseParity);
    OnChoice(*dataBits_, &PortSetup::ChooseDataBits);
    OnChoice(*stopBits_, &PortSetup::ChooseStopBits);
    return across;
}

// The group's name is that of its option buttons without their kind.
QButtonGroup* frmPortSetup::AddFrame(QBoxLayout& layout, const char* name, const MessageId& caption)
{
    auto* const frame = new QGroupBox(ToQString(texts_.Caption(caption)), this);
    frame->setObjectName(QLatin1String(name) + QStringLiteral("Frame"));
    const bool isColumn = layout.direction() == QBoxLayout::LeftToRight;
    new QBoxLayout(isColumn ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight, frame);
    layout.addWidget(frame);
    auto* const group = new QButtonGroup(frame);
    group->setObjectName(QLatin1String(name));
    return group;
}

void frmPortSetup::AddOption(QButtonGroup& group, int index, const QString& caption)
{
    auto* const frame = static_cast<QWidget*>(group.parent());
    auto* const option = new QRadioButton(caption, frame);
    option->setObjectName(group.objectName() + QStringLiteral("Option%1").arg(index));
    group.addButton(option, index);
    frame->layout()->addWidget(option);
}

// A click counts also on the option that is shown already: what the text holds may be something else. A
// screen reader sets an option without a click. Both come for most, and tell of one change.
void frmPortSetup::OnChoice(QButtonGroup& group, Choose choose)
{
    const auto take = [this, choose](int option) {
        const std::string before = setup_.Text();
        (setup_.*choose)(option);
        if (setup_.Text() != before)
            emit changed();
    };
    connect(&group, &QButtonGroup::idClicked, this, take);
    connect(&group, &QButtonGroup::idToggled, this, [take](int option, bool isChosen) {
        if (isChosen)
            take(option);
    });
}

void frmPortSetup::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    // Once a showing: a box that gives the focus back must not change what is shown.
    if (!std::exchange(wasShown_, true))
        QTimer::singleShot(0, this, [this] { Activate(); });
}

void frmPortSetup::Activate()
{
    if (!setup_.Tabs().empty()) {
        ShowChoices();
        return;
    }
    texts_.Show(Message::NoPort, {BoxIcon::Exclamation}, {}, Message::NoPortTitle);
    reject();
}

void frmPortSetup::TabStrip1_Click(int tab)
{
    setup_.Select(static_cast<std::size_t>(tab));
    ShowChoices();
}

void frmPortSetup::ShowChoices()
{
    const PortChoices choices = setup_.Choices();
    for (const auto& [group, option] :
         {std::pair{baud_, choices.baud}, std::pair{parity_, choices.parity},
          std::pair{dataBits_, choices.dataBits}, std::pair{stopBits_, choices.stopBits}}) {
        const QSignalBlocker quiet(group);
        group->button(option)->setChecked(true);
    }
}

}  // namespace kelvora
