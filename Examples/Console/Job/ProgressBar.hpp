#pragma once

#include <Platform/URLLoading/URLProgress.hpp>

/// How far a download is: a bar that grows on a terminal, and a line for each tenth elsewhere.
class ProgressBar {
public:
    void show(const tovrel::URLProgress& progress);

private:
    int shown_ = -1;
};
