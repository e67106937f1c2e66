// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "tests/windows/runningclock.h"

#include "config/maker.h"

#include <QtCore/qdir.h>
#include <QtCore/qfile.h>
#include <QtCore/qjsondocument.h>
#include <QtTest/qtest.h>

#include <array>
#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace
{

constexpr int limitMs = 60'000; // the first program in a Wine session takes its time
constexpr LONG_PTR watchedStyles
    = WS_EX_LAYERED | WS_EX_APPWINDOW | WS_EX_TOOLWINDOW | WS_EX_TOPMOST | WS_EX_TRANSPARENT;

struct RegionDeleter {
    void operator()(HRGN region) const { DeleteObject(region); }
};
using Region = std::unique_ptr<std::remove_pointer_t<HRGN>, RegionDeleter>;

QString configurationFile() { return Settings::folder() + u"/config.json"_s; }

BOOL CALLBACK appendWindow(HWND window, LPARAM list)
{
    reinterpret_cast<QList<HWND> *>(list)->append(window);
    return TRUE;
}

QString titleOf(HWND window)
{
    std::array<wchar_t, 64> text{};
    const int length = GetWindowTextW(window, text.data(), int(text.size()));
    return QString::fromWCharArray(text.data(), length);
}

QString classOf(HWND window)
{
    std::array<wchar_t, 256> text{};
    const int length = GetClassNameW(window, text.data(), int(text.size()));
    return QString::fromWCharArray(text.data(), length);
}

QRegion toRegion(HRGN region)
{
    std::vector<char> buffer(GetRegionData(region, 0, nullptr));
    auto *const data = reinterpret_cast<RGNDATA *>(buffer.data());
    GetRegionData(region, DWORD(buffer.size()), data);
    const std::span rectangles(reinterpret_cast<RECT *>(data->Buffer), data->rdh.nCount);
    QRegion result;
    for (const RECT &rectangle : rectangles)
        result += QRect(QPoint(rectangle.left, rectangle.top),
            QPoint(rectangle.right - 1, rectangle.bottom - 1));
    return result;
}

} // namespace

QString Settings::makerFolder()
{
    return QDir::fromNativeSeparators(qEnvironmentVariable("APPDATA")) + u'/'
        + Maker::organizationDomain;
}

QString Settings::folder() { return makerFolder() + u"/Vesper"_s; }

bool Settings::write(const QJsonObject &settings)
{
    QFile file(configurationFile());
    return QDir().mkpath(folder()) && file.open(QFile::WriteOnly)
        && file.write(QJsonDocument(settings).toJson()) > 0;
}

QJsonObject Settings::read()
{
    QFile file(configurationFile());
    return file.open(QFile::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object()
                                      : QJsonObject();
}

QJsonObject Settings::geometry(int left, int top, int width, int height, const QJsonObject &others)
{
    QJsonObject settings = others;
    settings[u"Geometry"_s] = QJsonObject{
        {u"Left"_s, left}, {u"Top"_s, top}, {u"Width"_s, width}, {u"Height"_s, height}};
    return settings;
}

QRectF Settings::storedGeometry()
{
    const QJsonObject stored = read()[u"Geometry"_s].toObject();
    return {stored[u"Left"_s].toDouble(), stored[u"Top"_s].toDouble(),
        stored[u"Width"_s].toDouble(), stored[u"Height"_s].toDouble()};
}

RunningClock::RunningClock(const QStringList &arguments)
{
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.start(QStringLiteral(VESPER_PROGRAM), arguments);
}

RunningClock::~RunningClock()
{
    m_process.kill();
    m_process.waitForFinished();
}

template <typename Wanted> QList<HWND> RunningClock::windows(Wanted wanted) const
{
    QList<HWND> all;
    EnumWindows(appendWindow, reinterpret_cast<LPARAM>(&all));
    all.removeIf([&](HWND window) {
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        return owner != DWORD(m_process.processId()) || !wanted(window);
    });
    return all;
}

bool RunningClock::waitForWindow()
{
    const auto isThere = [this] {
        const QList<HWND> found = windows(
            [](HWND window) { return IsWindowVisible(window) && titleOf(window) == u"Vesper"_s; });
        m_window = found.value(0);
        return m_window != nullptr;
    };
    return QTest::qWaitFor(isThere, limitMs);
}

int RunningClock::waitForExit()
{
    const bool hasEnded
        = m_process.state() == QProcess::NotRunning || m_process.waitForFinished(limitMs);
    return hasEnded ? m_process.exitCode() : -1;
}

bool RunningClock::isRunning()
{
    return !m_process.waitForFinished(0) && m_process.state() == QProcess::Running;
}

QByteArray RunningClock::output() { return m_process.readAll(); }

bool RunningClock::isPopup(HWND window) { return classOf(window).contains("QWindowPopup"_L1); }

QList<HWND> RunningClock::otherWindows() const
{
    return windows([this](HWND window) { return IsWindowVisible(window) && window != m_window; });
}

HWND RunningClock::windowOfClass(QStringView part) const
{
    return windows([part](HWND window) { return classOf(window).contains(part); }).value(0);
}

LONG_PTR RunningClock::styles() const
{
    return GetWindowLongPtrW(m_window, GWL_EXSTYLE) & watchedStyles;
}

QRect RunningClock::geometry() const
{
    RECT rect = {};
    GetWindowRect(m_window, &rect);
    return QRect(QPoint(rect.left, rect.top), QPoint(rect.right - 1, rect.bottom - 1));
}

void RunningClock::moveTo(QPoint position, UINT flags) const
{
    SetWindowPos(m_window, nullptr, position.x(), position.y(), 0, 0,
        SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | flags);
}

std::optional<QRegion> RunningClock::mask() const
{
    const Region region(CreateRectRgn(0, 0, 0, 0));
    if (GetWindowRgn(m_window, region.get()) == ERROR)
        return std::nullopt;
    return toRegion(region.get()) & QRect(QPoint(), geometry().size());
}

LRESULT RunningClock::send(UINT message, WPARAM wParam, LPARAM lParam) const
{
    return SendMessageW(m_window, message, wParam, lParam);
}

void RunningClock::post(UINT message, WPARAM wParam, LPARAM lParam) const
{
    PostMessageW(m_window, message, wParam, lParam);
}
