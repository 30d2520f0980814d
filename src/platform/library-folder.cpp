#include "platform/library-folder_p.h"

#include <QFile>
#include <QFileInfo>

#ifdef _WIN32
#include "platform/win32.h"
#else
#include <dlfcn.h>
#endif

QString vantkit::internal::libraryFolder()
{
    auto* const address = reinterpret_cast<void*>(&libraryFolder); // or any other function in it
#ifdef _WIN32
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        static_cast<LPCWSTR>(address), &module);
    wchar_t path[32768]; // no path is longer
    const DWORD length = GetModuleFileNameW(module, path, 32768);
    const QString file = QString::fromWCharArray(path, static_cast<int>(length));
#else
    Dl_info info {};
    dladdr(address, &info);
    const QString file = QFile::decodeName(info.dli_fname);
#endif
    return QFileInfo(file).canonicalPath();
}
