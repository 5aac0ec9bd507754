#include "standin/desk/command_panel.h"

namespace desk {
namespace {

constexpr int transcriptId = 101, inputId = 102;
constexpr int usualLines = 4, manyLines = 18;
constexpr int margin = 8;
constexpr COLORREF paper = RGB(0xFF, 0xFF, 0xFF), transcriptPaper = RGB(0xF4, 0xF5, 0xF7), rule = RGB(0xD5, 0xD9, 0xDF),
                   ink = RGB(0x24, 0x28, 0x2D), paleInk = RGB(0x5B, 0x65, 0x70);
// The transcript forgets its beginning beyond this many characters.
constexpr int longestTranscript = 200'000;
const wchar_t* const commandPrompt = L"Command:";

std::wstring textOf(HWND window)
{
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)), L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()) + 1)));
    return text;
}

} // namespace

CommandPanel::CommandPanel(const UiFonts& fonts, CommandPanelEvents events)
    : m_fonts(fonts), m_events(std::move(events)), m_input(*this), m_prompt(commandPrompt)
{
    m_ground.Attach(CreateSolidBrush(transcriptPaper));
    m_inputGround.Attach(CreateSolidBrush(paper));
}

CommandPanel::~CommandPanel()
{
    if (m_hWnd != nullptr)
        DestroyWindow();
}

BOOL CommandPanel::Create(CFrameWnd* frame)
{
    m_dwStyle = CBRS_ALIGN_BOTTOM;
    const RECT nowhere{0, 0, 10, 10};
    if (!CWnd::Create(AfxRegisterWndClass(0, LoadCursorW(nullptr, IDC_ARROW)), L"Command line",
                      WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, nowhere, frame, 0xE8A0))
        return FALSE;
    m_transcript.Create(L"EDIT", L"", WS_CHILD | WS_VISIBLE | WS_VSCROLL | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL,
                        nowhere, this, transcriptId);
    const HWND edit =
        CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL, 0, 0, 10, 10, m_hWnd,
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(inputId)), AfxGetInstanceHandle(), nullptr);
    m_input.SubclassWindow(edit);
    for (const HWND window : {m_transcript.m_hWnd, m_input.m_hWnd})
        ::SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(m_fonts.monospace.GetSafeHandle()), FALSE);
    m_transcript.SendMessage(EM_SETLIMITTEXT, longestTranscript + 4096);
    return TRUE;
}

CSize CommandPanel::CalcFixedLayout(BOOL, BOOL)
{
    return {32767, (m_tall ? manyLines : usualLines) * m_fonts.monospaceHeight + margin + rowHeight()};
}

void CommandPanel::print(const std::wstring& line)
{
    const HWND edit = m_transcript.m_hWnd;
    int length = ::GetWindowTextLengthW(edit);
    if (length > longestTranscript) {
        ::SendMessageW(edit, EM_SETSEL, 0, length / 2);
        ::SendMessageW(edit, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(L""));
        length = ::GetWindowTextLengthW(edit);
    }
    const std::wstring text = (length > 0 ? L"\r\n" : L"") + line;
    ::SendMessageW(edit, EM_SETSEL, length, length);
    ::SendMessageW(edit, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(text.c_str()));
    ::SendMessageW(edit, EM_SCROLLCARET, 0, 0);
}

void CommandPanel::showPrompt(const std::wstring& prompt)
{
    m_prompt = prompt.empty() ? commandPrompt : prompt;
    layOut();
    Invalidate(FALSE);
}

std::wstring CommandPanel::typedText() const
{
    return textOf(m_input.m_hWnd);
}

void CommandPanel::setTypedText(const std::wstring& text)
{
    if (text == typedText())
        return;
    ::SetWindowTextW(m_input.m_hWnd, text.c_str());
    ::SendMessageW(m_input.m_hWnd, EM_SETSEL, text.size(), static_cast<LPARAM>(text.size()));
}

void CommandPanel::type(wchar_t character)
{
    ::SendMessageW(m_input.m_hWnd, WM_CHAR, character, 1);
}

void CommandPanel::toggleHeight()
{
    m_tall = !m_tall;
    m_events.heightChanged();
}

std::wstring CommandPanel::transcript() const
{
    return textOf(m_transcript.m_hWnd);
}

LRESULT CommandPanel::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_SIZE:
        layOut();
        return 0;
    case WM_ERASEBKGND:
        return TRUE;
    case WM_CTLCOLORSTATIC: // a read-only edit control asks as if it were a label
    case WM_CTLCOLOREDIT: {
        const bool isInput = reinterpret_cast<HWND>(lParam) == m_input.m_hWnd;
        const HDC context = reinterpret_cast<HDC>(wParam);
        SetTextColor(context, isInput ? ink : paleInk);
        SetBkColor(context, isInput ? paper : transcriptPaper);
        return reinterpret_cast<LRESULT>(isInput ? m_inputGround.GetSafeHandle() : m_ground.GetSafeHandle());
    }
    case WM_LBUTTONDOWN:
        m_input.SetFocus();
        return 0;
    }
    return CControlBar::WindowProc(message, wParam, lParam);
}

void CommandPanel::layOut()
{
    if (m_input.m_hWnd == nullptr)
        return;
    CRect client;
    GetClientRect(&client);
    const HDC context = ::GetDC(m_hWnd);
    const HGDIOBJ former = SelectObject(context, m_fonts.monospace.GetSafeHandle());
    SIZE promptSize{};
    GetTextExtentPoint32W(context, m_prompt.c_str(), static_cast<int>(m_prompt.size()), &promptSize);
    SelectObject(context, former);
    ::ReleaseDC(m_hWnd, context);
    const int inputTop = client.bottom - rowHeight();
    const int inputLeft = margin + promptSize.cx + margin;
    m_transcript.MoveWindow(margin, margin / 2, client.right - margin, inputTop - margin / 2);
    m_input.MoveWindow(inputLeft, inputTop + 4, std::max<int>(client.right - inputLeft - margin, 40),
                       m_fonts.monospaceHeight);
    m_transcript.SendMessage(EM_SCROLLCARET);
}

void CommandPanel::DoPaint(CDC* pDC)
{
    CRect client;
    GetClientRect(&client);
    const int inputTop = client.bottom - rowHeight();
    pDC->FillSolidRect(0, 0, client.right, inputTop, transcriptPaper);
    pDC->FillSolidRect(0, inputTop, client.right, rowHeight(), paper);
    pDC->FillSolidRect(0, 0, client.right, 1, rule);
    pDC->FillSolidRect(0, inputTop, client.right, 1, rule);
    const HGDIOBJ former = SelectObject(pDC->GetSafeHdc(), m_fonts.monospace.GetSafeHandle());
    pDC->SetBkMode(TRANSPARENT);
    pDC->SetTextColor(paleInk);
    pDC->TextOut(margin, inputTop + 4, m_prompt.c_str(), static_cast<int>(m_prompt.size()));
    SelectObject(pDC->GetSafeHdc(), former);
}

// --- The input line ---

bool CommandPanel::onInputKey(WPARAM key)
{
    switch (key) {
    case VK_UP:
        setTypedText(m_history.older(typedText()));
        return true;
    case VK_DOWN:
        setTypedText(m_history.newer(typedText()));
        return true;
    case VK_PRIOR:
        m_transcript.SendMessage(EM_SCROLL, SB_PAGEUP);
        return true;
    case VK_NEXT:
        m_transcript.SendMessage(EM_SCROLL, SB_PAGEDOWN);
        return true;
    case VK_ESCAPE:
        m_events.escaped();
        return true;
    default:
        return false;
    }
}

bool CommandPanel::onInputCharacter(wchar_t character)
{
    if (character == VK_ESCAPE || character == L'\t')
        return true;
    if (character != L'\r' && (character != L' ' || m_events.blanksAreText()))
        return false;
    m_history.add(typedText());
    m_events.entered();
    return true;
}

LRESULT CommandPanel::InputLine::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_KEYDOWN && m_panel.onInputKey(wParam))
        return 0;
    if (message == WM_CHAR && m_panel.onInputCharacter(static_cast<wchar_t>(wParam)))
        return 0;
    return CWnd::WindowProc(message, wParam, lParam);
}

} // namespace desk
