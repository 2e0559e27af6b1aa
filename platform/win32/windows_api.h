#pragma once

// The one door to the system's headers. The program speaks to the system in wide characters; texts of its own
// are Windows-1252 and are converted by platform/win32/text.h.
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef UNICODE
#define UNICODE
#endif
#ifndef _WIN32_WINNT
#define _WIN32_WINNT 0x0601  // Windows 7
#endif
#include <windows.h>
// The order matters to the system's headers: windows.h comes first.
#include <commctrl.h>
#include <shellapi.h>
#undef DrawText
#undef GetPrivateProfileString
#undef WritePrivateProfileString
