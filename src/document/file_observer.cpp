#include "document/file_observer.h"

#include <cstdio>

#include "document/file.h"

TeskFileObserver::~TeskFileObserver() {
    if (!file_)
        return;
#ifndef NDEBUG
    std::fputs(
        "Warning: Calling DetachFromFile from ~TeskFileObserver - derived class "
        "OnTeskFileDetach() won't be called\n",
        stderr);
#endif
    DetachFromFile();
}

void TeskFileObserver::AttachToFile(TeskFile* file) {
    if (file == file_)
        return;
    DetachFromFile();
    if (!file)
        return;
    file_ = file;
    file->AddObserver(this);
    OnTeskFileAttach();
}

void TeskFileObserver::DetachFromFile() {
    if (!file_)
        return;
    file_->RemoveObserver(this);
    // Still attached in name, so the observer can undo what it set up.
    OnTeskFileDetach();
    file_ = nullptr;
}
