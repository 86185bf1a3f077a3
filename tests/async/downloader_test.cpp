#include "async/file_downloader.h"
#include "support/qt_printers.h"

#include <QFile>
#include <QTest>

#include <atomic>
#include <gtest/gtest.h>
#include <semaphore>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

/// A fetch that waits until the test lets it go on, and answers with a file that holds the address.
struct HeldFetch {
    CFileDownloader::Fetch Function()
    {
        return [this](const QString& url, const std::stop_token&, DownloadedFile* file) {
            begun.release();
            goOn.acquire();
            ++count;
            if (url.startsWith(u"bad"))
                return E_FAIL;
            *file = std::make_unique<QTemporaryFile>();
            EXPECT_TRUE((*file)->open());
            (*file)->write(url.toUtf8());
            (*file)->close();
            return S_OK;
        };
    }

    std::counting_semaphore<> begun{0};
    std::counting_semaphore<> goOn{0};
    std::atomic<int> count = 0;
};

class DownloaderTest : public testing::Test, public IcFileDownloaderEvents
{
protected:
    void OnDownloadComplete(const QString& path) override
    {
        EXPECT_EQ(QThread::currentThread(), qApp->thread());
        QFile file(path);
        const bool isOpen = file.open(QIODevice::ReadOnly);
        log.append(isOpen ? u"got "_s + QString::fromUtf8(file.readAll()) : u"empty"_s);
        lastPath = path;
        if (!next.isEmpty())
            downloader->Download(std::exchange(next, {}));
    }
    void OnDownloadFailed(HRESULT code) override { log.append(u"failed %1"_s.arg(code)); }

    bool WaitForLog(qsizetype size)
    {
        return QTest::qWaitFor([&] { return log.size() >= size; });
    }

    HeldFetch fetch;
    std::unique_ptr<CFileDownloader> downloader = std::make_unique<CFileDownloader>(*this, fetch.Function());
    QStringList log;
    QString lastPath;
    QString next;
};

} // namespace

TEST_F(DownloaderTest, TellsOfTheLatestRequestAloneAndLeavesNoFile)
{
    downloader->Download(u"first"_s);
    fetch.begun.acquire();
    downloader->Download(u"second"_s);
    fetch.goOn.release(2);
    ASSERT_TRUE(WaitForLog(1));
    EXPECT_EQ(log, QStringList{u"got second"_s});
    EXPECT_EQ(fetch.count, 2);
    EXPECT_FALSE(QFile::exists(lastPath));

    next = u"from the event"_s; // the lock is held there
    fetch.goOn.release(3);
    downloader->Download(u"bad"_s);
    ASSERT_TRUE(WaitForLog(2));
    downloader->Download(u"third"_s);
    ASSERT_TRUE(WaitForLog(4));
    EXPECT_EQ(log.mid(1), QStringList({u"failed %1"_s.arg(E_FAIL), u"got third"_s, u"got from the event"_s}));
}

TEST_F(DownloaderTest, ReportsTheResetStateWhenANewerRequestCameBeforeTheMessage)
{
    downloader->Download(u"first"_s);
    fetch.begun.acquire();
    fetch.goOn.release();
    // Its message is queued now or soon; no event is handled here until the second one has begun.
    while (fetch.count < 1)
        QThread::yieldCurrentThread();
    downloader->Download(u"second"_s);
    fetch.begun.acquire();
    fetch.goOn.release();
    ASSERT_TRUE(QTest::qWaitFor([this] { return log.contains(u"got second"_s); }));
    EXPECT_LE(log.size(), 2);
    EXPECT_TRUE(log.size() == 1 || log.first() == u"empty"_s);
}

TEST_F(DownloaderTest, EndsWithoutReportingOrBeginningAnew)
{
    downloader->Download(u"first"_s);
    fetch.begun.acquire();
    downloader->Download(u"second"_s); // waits with the stop
    std::jthread release([this] { fetch.goOn.release(2); });
    downloader.reset(); // returns when the download has
    EXPECT_EQ(fetch.count, 1);
    QCoreApplication::processEvents();
    EXPECT_EQ(log, QStringList());
}

TEST(MessageOnlyWindowTest, HandsOnWhatIsTheProgramsOwn)
{
    struct Subscriber final : IcMsgOnlyWindowSubscriber {
        void OnMessage(std::uint32_t code, std::uintptr_t wParam, std::uintptr_t lParam) override
        {
            got.append({code, wParam, lParam});
        }
        QList<std::tuple<std::uint32_t, std::uintptr_t, std::uintptr_t>> got;
    } subscriber;
    {
        CMessageOnlyWindow window(subscriber);
        std::jthread([&] {
            window.PostMessage(CMessageOnlyWindow::kUserMessage - 1, 1, 2);
            window.PostNotification(0, 3, 4);
            window.PostNotification(7, 5, UINTPTR_MAX);
        }).join();
        EXPECT_TRUE(subscriber.got.isEmpty());
        QCoreApplication::processEvents();
        ASSERT_EQ(subscriber.got.size(), 2);
        EXPECT_EQ(subscriber.got[0], std::make_tuple(0U, std::uintptr_t{3}, std::uintptr_t{4}));
        EXPECT_EQ(subscriber.got[1], std::make_tuple(7U, std::uintptr_t{5}, UINTPTR_MAX));
        window.PostNotification(8, 0, 0);
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(subscriber.got.size(), 2);
}

} // namespace quenvolta
