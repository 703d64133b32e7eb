#include <gtest/gtest.h>

#include <QtCore>

namespace kelvora {

namespace {

QString TypeOf(const QString& name, const QByteArray& content)
{
    return QMimeDatabase().mimeTypeForFileNameAndData(name, content).name();
}

TEST(MimeTypes, TellSetupsByTheirBeginningAndDumpsByTheirName)
{
    // Read when the first type is asked for.
    const QTemporaryDir data;
    ASSERT_TRUE(QDir(data.path()).mkpath("mime/packages"));
    ASSERT_TRUE(QFile::copy(KELVORA_SOURCE "/packaging/desktop/kelvora.xml",
                            data.filePath("mime/packages/kelvora.xml")));
    qputenv("XDG_DATA_HOME", data.path().toUtf8());

    QFile example(QStringLiteral(KELVORA_SOURCE "/examples/all-four.dat"));
    ASSERT_TRUE(example.open(QIODevice::ReadOnly));
    const QByteArray setup = example.readAll();
    const QString setupType = QStringLiteral("application/x-kelvora-setup");
    EXPECT_EQ(TypeOf("till.dat", setup), setupType);
    EXPECT_EQ(TypeOf("till", setup), setupType);
    EXPECT_EQ(TypeOf("till", setup.toLower()), setupType);
    EXPECT_NE(TypeOf("other.dat", "\n" + setup), setupType);
    EXPECT_NE(TypeOf("other.dat", "[Other]\r\n"), setupType);
    EXPECT_EQ(TypeOf("till.mem", "0000:00 00"), "application/x-kelvora-dump");
    EXPECT_TRUE(QMimeDatabase().mimeTypeForName(setupType).inherits("text/plain"));
}

}  // namespace

}  // namespace kelvora
