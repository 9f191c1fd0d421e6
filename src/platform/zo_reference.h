#pragma once
// Intrusive reference counting for SWF writer entities: a shape placed in
// hundreds of frames is shared, and the count lives in the entity so that a raw
// pointer can always be turned back into a counted one.
#include <cstdint>
#include <utility>

/// Base of every counted entity. Starts with a count of zero; the first
/// ZoAutoInterface2 that holds it takes it to one.
class ZoReferenceClass {
  public:
    ZoReferenceClass() = default;
    ZoReferenceClass(const ZoReferenceClass&) = delete;
    ZoReferenceClass& operator=(const ZoReferenceClass&) = delete;
    virtual ~ZoReferenceClass() = default;

    void AddRef() noexcept { ++count_; }
    void Release() noexcept {
        if (--count_ == 0)
            DestroyReferenceObject();
    }
    uint32_t GetReferenceCount() const noexcept { return count_; }

  protected:
    virtual void DestroyReferenceObject() noexcept { delete this; }

  private:
    uint32_t count_ = 0;
};

/// Counted holder: copying adds a reference, destruction releases one.
template <typename T>
class ZoAutoInterface2 {
  public:
    ZoAutoInterface2() noexcept = default;
    ZoAutoInterface2(std::nullptr_t) noexcept {}
    explicit ZoAutoInterface2(T* object) noexcept : object_(object) { Acquire(); }
    ZoAutoInterface2(const ZoAutoInterface2& other) noexcept : object_(other.object_) { Acquire(); }
    ZoAutoInterface2(ZoAutoInterface2&& other) noexcept
        : object_(std::exchange(other.object_, nullptr)) {}
    template <typename U>
    ZoAutoInterface2(const ZoAutoInterface2<U>& other) noexcept : object_(other.Get()) {
        Acquire();
    }
    ~ZoAutoInterface2() { Drop(); }

    ZoAutoInterface2& operator=(ZoAutoInterface2 other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }

    T* Get() const noexcept { return object_; }
    T* operator->() const noexcept { return object_; }
    T& operator*() const noexcept { return *object_; }
    explicit operator bool() const noexcept { return object_ != nullptr; }
    void Reset() noexcept {
        Drop();
        object_ = nullptr;
    }
    friend bool operator==(const ZoAutoInterface2& a, const ZoAutoInterface2& b) noexcept {
        return a.object_ == b.object_;
    }

  private:
    void Acquire() noexcept {
        if (object_)
            object_->AddRef();
    }
    void Drop() noexcept {
        if (object_)
            object_->Release();
    }
    T* object_ = nullptr;
};

/// Makes a new entity and holds it: `auto shape = ZoMakeCounted<ZoSWFShape>();`
template <typename T, typename... Args>
ZoAutoInterface2<T> ZoMakeCounted(Args&&... args) {
    return ZoAutoInterface2<T>(new T(std::forward<Args>(args)...));
}
