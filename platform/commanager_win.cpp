// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "platform/commanager.h"

#include "platform/shelllink.h"

#include <QtCore/qdir.h>
#include <QtCore/qfile.h>

#include <memory>
#include <vector>

#include <windows.h>

#include <objbase.h>
#include <shlobj.h>
#include <shlwapi.h>
#include <wrl/client.h>

using namespace Qt::StringLiterals;
using Microsoft::WRL::ComPtr;

namespace
{

constexpr int longestText = 32767; // characters of a path at most
constexpr qint64 largestLink = 1 << 20; // all texts at their longest come to less

class ComApartment
{
public:
    ComApartment()
        : m_result(CoInitialize(nullptr))
    {
    }
    Q_DISABLE_COPY_MOVE(ComApartment)
    ~ComApartment()
    {
        if (SUCCEEDED(m_result))
            CoUninitialize();
    }

private:
    HRESULT m_result;
};

struct FreeItemIdList {
    void operator()(ITEMIDLIST *list) const { CoTaskMemFree(list); }
};
using ItemIdList = std::unique_ptr<ITEMIDLIST, FreeItemIdList>;

const wchar_t *wide(const QString &text) { return reinterpret_cast<const wchar_t *>(text.utf16()); }

ComPtr<IShellLinkW> newShellLink()
{
    ComPtr<IShellLinkW> link;
    CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW,
        reinterpret_cast<void **>(link.GetAddressOf()));
    return link;
}

ComPtr<IPersistFile> fileOf(const ComPtr<IShellLinkW> &link)
{
    ComPtr<IPersistFile> file;
    link->QueryInterface(IID_IPersistFile, reinterpret_cast<void **>(file.GetAddressOf()));
    return file;
}

bool describeItem(const ComPtr<IShellLinkW> &link, const AutoStart::ShortcutSpec &spec)
{
    const QString name = u"shell:AppsFolder\\"_s
        + (spec.appUserModelId.isEmpty() ? spec.targetPath : spec.appUserModelId);
    ITEMIDLIST *list = nullptr;
    if (FAILED(SHParseDisplayName(wide(name), nullptr, &list, 0, nullptr)))
        return false;
    const ItemIdList owned(list);
    return SUCCEEDED(link->SetIDList(list))
        && SUCCEEDED(link->SetDescription(wide(spec.description)));
}

bool describeProgram(const ComPtr<IShellLinkW> &link, const AutoStart::ShortcutSpec &spec)
{
    const QString target = QDir::toNativeSeparators(spec.targetPath);
    const QString folder = QDir::toNativeSeparators(spec.workingDirectory);
    const QString icon = QDir::toNativeSeparators(spec.iconPath);
    return SUCCEEDED(link->SetPath(wide(target)))
        && SUCCEEDED(link->SetArguments(wide(spec.arguments)))
        && SUCCEEDED(link->SetWorkingDirectory(wide(folder)))
        && SUCCEEDED(link->SetDescription(wide(spec.description)))
        && (icon.isEmpty() || SUCCEEDED(link->SetIconLocation(wide(icon), spec.iconIndex)))
        && SUCCEEDED(link->SetShowCmd(spec.showCommand));
}

// Every text of a link is read into a buffer by a method of its own.
template <typename Read> bool readText(QString &text, Read read)
{
    std::vector<wchar_t> buffer(longestText + 1);
    if (FAILED(read(buffer.data())))
        return false;
    text = QString::fromWCharArray(buffer.data());
    return true;
}

bool readItem(const ComPtr<IShellLinkW> &link, AutoStart::ShortcutSpec &spec)
{
    ITEMIDLIST *list = nullptr;
    if (FAILED(link->GetIDList(&list)) || !list)
        return false;
    const ItemIdList owned(list);
    ComPtr<IShellFolder> desktop;
    STRRET name = {};
    if (FAILED(SHGetDesktopFolder(desktop.GetAddressOf()))
        || FAILED(desktop->GetDisplayNameOf(list, SHGDN_FORPARSING, &name)))
        return false;
    return readText(spec.appUserModelId, [&](wchar_t *buffer) {
        return StrRetToBufW(&name, list, buffer, longestText);
    }) && readText(spec.description, [&](wchar_t *buffer) {
        return link->GetDescription(buffer, longestText);
    });
}

bool readProgram(const ComPtr<IShellLinkW> &link, AutoStart::ShortcutSpec &spec)
{
    int showCommand = 0;
    int iconIndex = 0;
    const bool isRead = readText(spec.targetPath, [&](wchar_t *buffer) {
        return link->GetPath(buffer, longestText, nullptr, 0);
    }) && readText(spec.arguments, [&](wchar_t *buffer) {
        return link->GetArguments(buffer, longestText);
    }) && readText(spec.workingDirectory, [&](wchar_t *buffer) {
        return link->GetWorkingDirectory(buffer, longestText);
    }) && readText(spec.description, [&](wchar_t *buffer) {
        return link->GetDescription(buffer, longestText);
    }) && readText(spec.iconPath, [&](wchar_t *buffer) {
        return link->GetIconLocation(buffer, longestText, &iconIndex);
    }) && SUCCEEDED(link->GetShowCmd(&showCommand));
    spec.iconIndex = iconIndex;
    spec.showCommand = showCommand;
    return isRead;
}

// The shell's own reader trusts a file's sizes and offsets: Wine's crashes on some that are wrong.
bool holdsWholeLink(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.size() <= largestLink
        && isWholeShellLink(file.readAll());
}

} // namespace

bool ComManager::createShortcut(const AutoStart::ShortcutSpec &spec) const
{
    const ComApartment apartment;
    const ComPtr<IShellLinkW> link = newShellLink();
    if (!link || !(spec.viaAppsFolder ? describeItem(link, spec) : describeProgram(link, spec)))
        return false;
    const ComPtr<IPersistFile> file = fileOf(link);
    const QString path = QDir::toNativeSeparators(spec.linkPath);
    return file && SUCCEEDED(file->Save(wide(path), TRUE));
}

bool ComManager::readShortcut(AutoStart::ShortcutSpec &spec) const
{
    if (!holdsWholeLink(spec.linkPath))
        return false;
    const ComApartment apartment;
    const ComPtr<IShellLinkW> link = newShellLink();
    const ComPtr<IPersistFile> file = link ? fileOf(link) : nullptr;
    const QString path = QDir::toNativeSeparators(spec.linkPath);
    if (!file || FAILED(file->Load(wide(path), STGM_READ)))
        return false;
    return spec.viaAppsFolder ? readItem(link, spec) : readProgram(link, spec);
}
