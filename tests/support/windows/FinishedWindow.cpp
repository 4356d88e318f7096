#include <cstdio>
#include <windows.h>

// Shows a window with the title of a finished batch, and ends well once the window is asked to
// close.

static LRESULT CALLBACK answer(HWND window, UINT message, WPARAM first, LPARAM second)
{
    if (message == WM_CLOSE)
        PostQuitMessage(0);
    return DefWindowProcW(window, message, first, second);
}

int main()
{
    WNDCLASSW kind = {};
    kind.lpfnWndProc = answer;
    kind.lpszClassName = L"FinishedWindow";
    RegisterClassW(&kind);
    CreateWindowW(kind.lpszClassName, L"Beëindigd - tijdelijk", WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                  CW_USEDEFAULT, CW_USEDEFAULT, 400, 100, nullptr, nullptr, nullptr, nullptr);
    std::puts("shown");
    std::fflush(stdout);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0)
        DispatchMessageW(&message);
    std::puts("closed");
    return 0;
}
