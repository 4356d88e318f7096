#include "platform/NativeHost.h"
#include "tests/support/Test.h"

#include <windows.h>

using namespace platform;

static LRESULT CALLBACK answer(HWND window, UINT message, WPARAM first, LPARAM second)
{
    const bool asDescribed = message == 16 && first == 0 && second != 0 &&
                             *reinterpret_cast<const std::int32_t *>(second) == 0;
    return asDescribed ? 7 : DefWindowProcW(window, message, first, second);
}

TEST(BatchWindow, IsFoundByItsWholeTitleAndAskedToClose)
{
    NativeHost host;
    WNDCLASSW kind = {};
    kind.lpfnWndProc = answer;
    kind.lpszClassName = L"Titled";
    RegisterClassW(&kind);
    const std::pair<BatchWindowKind, QString> cases[] = {
        {BatchWindowKind::Running, host.settingsDirectory() + u"\\System32\\cmd.exe"_s},
        {BatchWindowKind::Finished, u"Beëindigd - tijdelijk"_s}};
    for (const auto &[batch, title] : cases) {
        const std::uint32_t before = host.findBatchWindow(batch);
        const HWND window = CreateWindowW(L"Titled", title.toStdWString().c_str(), WS_OVERLAPPED, 0,
                                          0, 1, 1, nullptr, nullptr, nullptr, nullptr);
        ASSERT_NE(window, nullptr) << "no display";
        EXPECT_EQ(host.findBatchWindow(batch), HandleToULong(window));
        EXPECT_EQ(host.closeBatchWindow(HandleToULong(window)), 7);
        SetWindowTextW(window, (title + u'x').toStdWString().c_str());
        EXPECT_EQ(host.findBatchWindow(batch), before);
        DestroyWindow(window);
    }
}
