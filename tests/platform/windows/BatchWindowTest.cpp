#include "platform/NativeHost.h"
#include "tests/support/System.h"
#include "tests/support/Test.h"

#include <QTest>

#include <windows.h>

using namespace platform;

namespace {

struct Message
{
    UINT number;
    WPARAM first;
    std::int32_t second; ///< what the second parameter is the address of
    bool operator==(const Message &) const = default;
};

QList<Message> closings;

LRESULT CALLBACK answer(HWND window, UINT message, WPARAM first, LPARAM second)
{
    if (message != WM_CLOSE)
        return DefWindowProcW(window, message, first, second);
    closings << Message{message, first, *reinterpret_cast<const std::int32_t *>(second)};
    return 7;
}

// A top-level window of that title as long as it lives. It is not shown.
class TitledWindow
{
public:
    explicit TitledWindow(const QString &title)
    {
        WNDCLASSW kind = {};
        kind.lpfnWndProc = answer;
        kind.lpszClassName = L"TitledWindow";
        RegisterClassW(&kind);
        m_window = CreateWindowW(kind.lpszClassName, title.toStdWString().c_str(), WS_OVERLAPPED, 0,
                                 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    }
    ~TitledWindow() { DestroyWindow(m_window); }
    Q_DISABLE_COPY_MOVE(TitledWindow)

    std::uint32_t handle() const { return HandleToULong(m_window); }

private:
    HWND m_window = nullptr;
};

} // namespace

TEST(BatchWindow, IsKnownByItsTitle)
{
    NativeHost host;
    {
        const TitledWindow running(host.settingsDirectory() + u"\\System32\\cmd.exe"_s);
        ASSERT_NE(running.handle(), 0U) << "no display";
        EXPECT_EQ(host.findBatchWindow(BatchWindowKind::Running), running.handle());
    }
    EXPECT_EQ(host.findBatchWindow(BatchWindowKind::Running), 0U);

    const QTemporaryDir folder;
    makeSlowBatch(folder.path());
    host.startBatch({folder.path() + u'/', u"slow.bat"_s, u"header"_s, u"audio"_s, u"out"_s},
                    [](auto) {});
    EXPECT_EQ(host.findBatchWindow(BatchWindowKind::Finished), 0U);
    {
        const TitledWindow finished(u"Beëindigd - tijdelijk"_s);
        EXPECT_EQ(host.findBatchWindow(BatchWindowKind::Finished), finished.handle());
        EXPECT_EQ(host.closeBatchWindow(finished.handle()), 7);
        EXPECT_EQ(closings, (QList<Message>{{16, 0, 0}}));
    }
    endSlowBatch(folder.path());
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return host.findBatchWindow(BatchWindowKind::Running) == 0; }));
    EXPECT_EQ(fileBytes(folder.filePath(u"out"_s)), "headeraudio");
}
