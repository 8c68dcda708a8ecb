// SPDX-License-Identifier: Apache-2.0
#include "platform/QorWindows.h"

#include <cstdio>

QorWindows::~QorWindows() = default;
SV::Window* QorWindows::appWindow() { return nullptr; }
SV::Window* QorWindows::topWindow() { return nullptr; }
bool QorWindows::isWaitCursor() { return false; }
void QorWindows::setWaitCursor(bool) {}
int QorWindows::box(SV::Window*, unsigned long, const SV::String&) { return 0; }
bool QorWindows::query(SV::Window*, const SV::String&) { return false; }
void QorWindows::clearShownBoxes() {}
long QorWindows::openProgress(SV::Window*, const SV::String&) { return -1; }
void QorWindows::closeProgress(long) {}
bool QorWindows::checkBoxDialog(SV::Window*, const SV::String&, std::span<QorCheckBox>) { return false; }

bool QorWindows::saveFileDialog(SV::Window*, const QorFileFilter&, SV::String& path) {
    path.Clear();
    return false;
}

void QorWindows::internalError(const char* source, long line, const char* text) {
    std::fprintf(stderr, "qor: internal error in %s, line %ld%s%s\n", source, line, *text != '\0' ? ": " : "", text);
}

QorErrorCode QorWindows::refreshLibraryList() { return QorErrorCode::Ok; }
