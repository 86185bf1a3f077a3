#include "certificates_fixture.h"
#include "provider/certificates/certificate_store.h"

#include <array>
#include <csignal>
#include <sys/inotify.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quenvolta
{

namespace
{

class CertificatesStoreTest : public CertificatesFixture
{
protected:
    void SetUp() override
    {
        MakePair(u"a"_s);
        MakePair(u"b"_s);
    }

    CertificateBundle Bundle(const QString& name) const
    {
        return ReadBundle(Content(name + ".crt"_L1) + Content(name + ".key"_L1));
    }
    void Install(const QString& name) const
    {
        const CertificateBundle bundle = Bundle(name);
        m_store.Install(bundle, *bundle.key);
    }

    CertificateStore m_store{m_data.Path()};
};

// Whatever moment the process ends at, the pair that counts is whole, and the next start leaves nothing else.
TEST_F(CertificatesStoreTest, AKilledProcessNeverLeavesACertificateWithAnothersKey)
{
    const CertificateBundle bundles[]{Bundle(u"a"_s), Bundle(u"b"_s)};
    Install(u"a"_s);
    int leftovers = 0;
    for (int kill = 0; kill < 40; ++kill) {
        std::array<int, 2> steps{};
        ASSERT_EQ(::pipe(steps.data()), 0);
        const pid_t child = ::fork();
        if (child == 0) {
            for (std::size_t turn = 0;; ++turn) {
                m_store.Install(bundles[turn % 2], *bundles[turn % 2].key);
                m_store.KeepRequest(*bundles[turn % 2].key, "request");
                if (::write(steps[1], "x", 1) != 1)
                    ::_exit(1);
            }
        }
        ::close(steps[1]);
        for (int step = 0; step <= kill % 5; ++step) {
            char read = 0;
            EXPECT_EQ(::read(steps[0], &read, 1), 1);
        }
        ::kill(child, SIGKILL);
        int status = 0;
        ::waitpid(child, &status, 0);
        ::close(steps[0]);

        leftovers += Files().size() > 4 ? 1 : 0;
        m_store.CleanLeftovers();
        const CertificateBundle installed = m_store.Installed();
        ASSERT_TRUE(installed.certificate);
        ASSERT_TRUE(m_store.HeldKey(*installed.certificate));
        for (const QString& file : Files())
            EXPECT_FALSE(QFileInfo(file).fileName().startsWith(u'.')) << file.toStdString();
        EXPECT_EQ(QDir(Certificates()).entryList({u"pair-*"_s}).size(), 1);
    }
    ExpectMatchingPair();
    EXPECT_GT(leftovers, 0) << "no kill came in the middle of anything";
}

// Nothing is made with another mode and narrowed later: no mode changes at all.
TEST_F(CertificatesStoreTest, NoFileIsWiderThanItsOwnerForAMoment)
{
    Install(u"a"_s);
    const mode_t previous = ::umask(0);
    const int watch = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    const QString requests = Certificates() + "/requests"_L1;
    ASSERT_TRUE(QDir().mkpath(requests));
    ::inotify_add_watch(watch, QFile::encodeName(requests).constData(), IN_ATTRIB | IN_CREATE);
    m_store.KeepRequest(*Bundle(u"b"_s).key, "request");
    ::umask(previous);
    alignas(inotify_event) std::array<char, 4096> events{};
    const ssize_t size = ::read(watch, events.data(), events.size());
    ::close(watch);
    int created = 0;
    for (ssize_t place = 0; place < size;) {
        inotify_event event{};
        std::memcpy(&event, events.data() + place, sizeof event);
        EXPECT_EQ(event.mask & IN_ATTRIB, 0U);
        created += (event.mask & IN_CREATE) != 0 ? 1 : 0;
        place += static_cast<ssize_t>(sizeof event + event.len);
    }
    EXPECT_EQ(created, 1);
    for (const QFileInfo& file : QDir(requests).entryInfoList(QDir::Files | QDir::Hidden)) {
        EXPECT_EQ(file.permissions() & ~(QFile::ReadUser | QFile::WriteUser | QFile::ReadOwner | QFile::WriteOwner),
                  QFile::Permissions());
    }
}

TEST_F(CertificatesStoreTest, AFullDiskLeavesTheOldPairAndNothingHalf)
{
    Install(u"a"_s);
    const QStringList before = Files();
    rlimit limit{};
    ::getrlimit(RLIMIT_FSIZE, &limit);
    const auto previousHandler = std::signal(SIGXFSZ, SIG_IGN);
    for (const rlim_t bytes : {rlim_t{0}, rlim_t{100}, rlim_t{300}}) {
        const rlimit tight{bytes, limit.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &tight);
        EXPECT_THROW(Install(u"b"_s), ProviderError) << bytes;
        if (bytes < 300) {
            EXPECT_THROW(m_store.KeepRequest(*Bundle(u"b"_s).key, "request"), ProviderError) << bytes;
        }
        ::setrlimit(RLIMIT_FSIZE, &limit);
        if (bytes == 300)
            break;
        EXPECT_EQ(Files(), before);
    }
    std::signal(SIGXFSZ, previousHandler);
    EXPECT_EQ(Files(), before);
    ExpectMatchingPair();
}

TEST_F(CertificatesStoreTest, ADamagedCertificateIsReportedAndCanBeReplaced)
{
    Install(u"a"_s);
    const QString file = QFileInfo(Certificates() + "/server.crt"_L1).canonicalFilePath();
    QFile damaged(file);
    ASSERT_TRUE(damaged.open(QIODevice::WriteOnly));
    damaged.write("-----BEGIN CERTIFICATE-----\nAAAA\n-----END CERTIFICATE-----\n");
    damaged.close();
    EXPECT_EQ(ErrorOf(Service(), u"GetCertificateInformation"_s, {}).Code(), WBEM_E_FAILED);
    EXPECT_EQ(Validate(Content(u"a.crt"_s)), 0U) << "the key is still there";
    ASSERT_EQ(Import(Content(u"b.crt"_s) + Content(u"b.key"_s)), S_OK);
    ExpectMatchingPair();
}

TEST_F(CertificatesStoreTest, OnlyTheLastTwentyRequestsAreKept)
{
    for (int number = 0; number < 22; ++number) {
        const PrivateKeyPtr key(EVP_EC_gen("P-256"));
        m_store.KeepRequest(*key, QByteArray::number(number));
    }
    EXPECT_EQ(Files().size(), 20);
    for (const QString& file : Files())
        EXPECT_FALSE(Content(file).endsWith("-\n0") || Content(file).endsWith("-\n1")) << file.toStdString();
}

} // namespace

} // namespace quenvolta
