#include "forms/MainWindowFixture.h"
#include "keymap/forms/frmKeyb.h"
#include "platform/qt/HelpTopic.h"
#include "windows/forms/HelpIndex.h"
#include "windows/forms/HelpOpener.h"
#include "windows/forms/HelpWindow.h"

namespace kelvora {
namespace {

QString Content(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll());
}

// "page.html#place" in a folder is a page with that place.
bool Leads(const QString& folder, const QString& link)
{
    const QString path = folder + '/' + link.section('#', 0, 0);
    if (!QFile::exists(path))
        return false;
    const QString place = link.section('#', 1);
    return place.isEmpty() || Content(path).contains("id=\"" + place + '"');
}

TEST(Help, EveryWindowHasAPageOfItsOwn)
{
    const QString windows =
        "TemplatesDialog TemplateName frmConfig frmKeyb96 frmKeyb64 frmKeybICCR MasterOptionsDialog "
        "McrOptionsDialog frmPortSetup PortsDialog LineMonitorWindow frmAbort ChangesDialog ComparisonDialog "
        "BackupsDialog frmEeprom SetupsDialog Print PrintPreview cdgExport cdgFlashDump cdgLineMonitor "
        "cdgComparison cdgOpenIdentities WriteQuestionDialog RecoveryDialog";
    for (const QString& window : windows.split(' ')) {
        QWidget form;
        form.setObjectName(window);
        QWidget control(&form);
        const QString page = HelpPageOf(&control);
        EXPECT_TRUE(!page.isEmpty() && Leads(QStringLiteral(KELVORA_DATA "/FenhoENG"), page))
            << window.toStdString() << page.toStdString();
    }
}

TEST(Help, WhatGoesOnInAWindowHasItsPageForAsLongAsItLasts)
{
    QWidget form;
    form.setObjectName("frmConfig");
    QWidget control(&form);
    {
        const HelpTopic scan(form, "line.html#scan");
        {
            const HelpTopic trouble(form, "line.html#trouble");
            EXPECT_EQ(HelpPageOf(&control), "line.html#trouble");
        }
        EXPECT_EQ(HelpPageOf(&control), "line.html#scan");
    }
    EXPECT_EQ(HelpPageOf(&control), "setup.html");
}

TEST(Help, SectionsAreFoundByAllTheirWords)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("a.html"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(
        "<html><head><title>Tills</title></head><body><p>Above.</p><h2>Types</h2><p>A key's Type</p>"
        "<h2>Keys</h2><p>Perch\xC3\xA9 types and keys</p></body></html>");
    file.close();
    const HelpIndex index(folder.path());
    const auto check = [&](const char* words, const QStringList& headings) {
        QStringList found;
        for (const HelpSection* const section : index.Find(words))
            found << section->heading;
        EXPECT_EQ(found, headings) << words;
    };
    check("key type", {"Types", "Keys"});
    check("KEYS", {"Keys"});
    check("perche", {"Keys"});
    check("above", {"Tills"});
    check("above perch\xC3\xA9 keys", {"Keys"});
    check("above never", {});
    check("types, perch\xC3\xA9?", {"Keys"});
    check("  ", {});
    check("types", {"Types", "Keys"});
}

class HelpForm : public MainWindowFixture {
protected:
    HelpForm() : MainWindowFixture(false, nullptr, KELVORA_DATA) { Start(); }

    static HelpWindow* Open() { return Opened<HelpWindow>(); }
    static QString Page() { return Find<QTextBrowser>(*Open()).source().fileName(); }
};

TEST_F(HelpForm, OpensAtThePageOfTheWindowEvenUnderAModalForm)
{
    Trigger(Command::HelpMenuGuide);
    EXPECT_EQ(Page(), "index.html");
    Trigger(Command::FileMenuNew);
    Trigger(Command::HelpMenuGuide);
    EXPECT_EQ(Page(), "setup.html");

    Trigger(Command::LayoutMenuAddKBMASTER);
    InDialog<frmKeyb>(StripButton::Master, [&](frmKeyb& form) {
        QTest::keyClick(&form, Qt::Key_F1);
        EXPECT_EQ(Page(), "keys.html");
        EXPECT_EQ(Open()->parentWidget(), &form) << "the form would hold it up";
    });
}

TEST_F(HelpForm, SearchesAllPagesAndShowsThePlace)
{
    Trigger(Command::HelpMenuGuide);
    auto* const search = &Find<QLineEdit>(*Open(), "Search");
    const auto& results = Find<QListWidget>(*Open(), "Results");
    QTest::keyClicks(search, "undo");
    ASSERT_GT(results.count(), 0);
    EXPECT_EQ(Page(), "index.html") << "typing alone goes nowhere";
    QApplication::setActiveWindow(Open());
    search->setFocus();
    QTest::keyClick(search, Qt::Key_Down);
    EXPECT_TRUE(results.hasFocus());
    EXPECT_EQ(Page(), "keys.html");
    EXPECT_FALSE(Find<QTextBrowser>(*Open()).extraSelections().isEmpty());
    QTest::keyClicks(search, " qqq");
    EXPECT_FALSE(results.isVisible());
    EXPECT_TRUE(Find<QWidget>(*Open(), "Count").isVisible());
    QTest::keyClick(Open(), Qt::Key_Escape);
    EXPECT_TRUE(search->text().isEmpty() && Open()->isVisible());
    QTest::keyClick(Open(), Qt::Key_Escape);
    EXPECT_FALSE(Open() && Open()->isVisible());
}

}  // namespace
}  // namespace kelvora
