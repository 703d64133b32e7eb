#include <gtest/gtest.h>

#include <QtCore>
#include <future>

#include "windows/forms/SingleCopy.h"

namespace kelvora {

TEST(SingleCopy, SecondCopyIsRefusedAndHandsItsFilesOver)
{
    const QTemporaryDir folder;
    auto first = std::make_unique<SingleCopy>(folder.path());
    ASSERT_TRUE(first->Claim());
    QStringList received;
    QObject::connect(first.get(), &SingleCopy::filesHandedOver,
                     [&](const QStringList& files) { received = files; });
    first->Listen();

    // A lock of this very process cannot be claimed twice either; the second copy runs beside this loop.
    auto handedOver = std::async(std::launch::async, [&folder] {
        SingleCopy second(folder.path());
        return !second.Claim() && second.HandOver({"/a/first.dat", "/a/second.dat"});
    });
    while (handedOver.wait_for(std::chrono::seconds(0)) != std::future_status::ready)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    EXPECT_TRUE(handedOver.get());
    EXPECT_EQ(received, QStringList({"/a/first.dat", "/a/second.dat"}));

    first.reset();
    SingleCopy third(folder.path());
    EXPECT_TRUE(third.Claim());
    EXPECT_FALSE(third.HandOver({"/a/first.dat"}));
}

}  // namespace kelvora
