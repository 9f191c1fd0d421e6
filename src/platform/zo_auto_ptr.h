#pragma once
// Single owners. The design passes owning holders by reference so that a callee
// can take the object out; std::unique_ptr& gives exactly that.
#include <memory>

template <typename T>
using ZoAutoPtr = std::unique_ptr<T>;

template <typename T>
using ZoAutoPtr2 = std::unique_ptr<T>;
