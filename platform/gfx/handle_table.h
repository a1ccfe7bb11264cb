// The objects behind handles, and the table that finds them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <exception>
#include <memory>
#include <utility>
#include <vector>

#include "platform/gfx/gdi.h"

namespace gfx {

// Anything a handle can stand for. Shared: the table holds an object until it is deleted, contexts
// hold what is selected into them.
class Object {
 public:
  // `kind` is an OBJ_ value. Stock objects are not counted and cannot be deleted by the program.
  Object(UINT kind, bool stock);
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;
  virtual ~Object();

  UINT Kind() const { return kind_; }
  bool Stock() const { return stock_; }
  // Null before the object is in the table. Keeps its value after the handle died, so that a
  // context can still name what is selected.
  HGDIOBJ Handle() const { return handle_; }

  // Objects that exist now, stock objects left out.
  static std::size_t Live();

 private:
  friend class HandleTable;
  const UINT kind_;
  const bool stock_;
  HGDIOBJ handle_ = nullptr;
};

// Handle values fit into 32 bits: slot index (16 bits), kind (4 bits, never 0), generation
// (12 bits). They are never below 0x10000, which leaves small numbers to colour indices. A freed
// slot is used again only after kSpareSlots others were freed, so a stale handle is mistaken for a
// live one after some millions of creations at the earliest.
class HandleTable {
 public:
  static constexpr std::size_t kMaxSlots = 0x10000;
  static constexpr std::size_t kSpareSlots = 1024;

  // Never destroyed: handles may be used until the process ends.
  static HandleTable& Instance();

  // Null where the table is full.
  HGDIOBJ Add(std::shared_ptr<Object> object);
  // Null for any value that is not a live handle.
  const std::shared_ptr<Object>& Find(const void* handle) const;
  // Ends the handle; the caller gets the table's share of the object.
  std::shared_ptr<Object> Remove(const void* handle);

 private:
  struct Slot {
    std::shared_ptr<Object> object;
    std::uint16_t generation = 0;
  };
  std::vector<Slot> slots_;
  std::deque<std::uint16_t> free_;
};

// The object of type T behind `handle`, or null. T::Is tells the kinds it covers.
template <class T>
std::shared_ptr<T> Share(const void* handle) {
  const std::shared_ptr<Object>& object = HandleTable::Instance().Find(handle);
  return object && T::Is(object->Kind()) ? std::static_pointer_cast<T>(object) : nullptr;
}

template <class T>
T* Find(const void* handle) {
  Object* object = HandleTable::Instance().Find(handle).get();
  return object != nullptr && T::Is(object->Kind()) ? static_cast<T*>(object) : nullptr;
}

// The answer of `work`, or `failure` where memory ran out.
template <class Answer, class Work>
Answer Guarded(Answer failure, Work work) {
  try {
    return work();
  } catch (const std::exception&) {
    return failure;
  }
}

// A new object's handle; null where memory or the table ran out.
template <class T, class... Arguments>
HGDIOBJ MakeHandle(Arguments&&... arguments) {
  return Guarded<HGDIOBJ>(nullptr, [&] {
    return HandleTable::Instance().Add(std::make_shared<T>(std::forward<Arguments>(arguments)...));
  });
}

}  // namespace gfx
