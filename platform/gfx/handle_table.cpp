#include "platform/gfx/handle_table.h"

namespace gfx {
namespace {

constexpr unsigned kKindShift = 16;
constexpr unsigned kGenerationShift = 20;
constexpr std::uint16_t kGenerationMask = 0xFFF;

std::size_t liveObjects = 0;

std::uintptr_t ValueOf(std::size_t index, UINT kind, std::uint16_t generation) {
  return static_cast<std::uintptr_t>(index) | static_cast<std::uintptr_t>(kind) << kKindShift |
         static_cast<std::uintptr_t>(generation) << kGenerationShift;
}

}  // namespace

Object::Object(UINT kind, bool stock) : kind_(kind), stock_(stock) {
  if (!stock_) ++liveObjects;
}

Object::~Object() {
  if (!stock_) --liveObjects;
}

std::size_t Object::Live() { return liveObjects; }

HandleTable& HandleTable::Instance() {
  static HandleTable* const table = new HandleTable;
  return *table;
}

HGDIOBJ HandleTable::Add(std::shared_ptr<Object> object) {
  const bool full = slots_.size() == kMaxSlots;
  if (full && free_.empty()) return nullptr;
  std::size_t index = slots_.size();
  if (full || free_.size() > kSpareSlots) {
    index = free_.front();
    free_.pop_front();
  } else {
    slots_.emplace_back();
  }
  Slot& slot = slots_[index];
  const std::uintptr_t value = ValueOf(index, object->Kind(), slot.generation);
  object->handle_ = reinterpret_cast<HGDIOBJ>(value);
  slot.object = std::move(object);
  return slot.object->handle_;
}

const std::shared_ptr<Object>& HandleTable::Find(const void* handle) const {
  static const std::shared_ptr<Object> none;
  const std::size_t index = reinterpret_cast<std::uintptr_t>(handle) & (kMaxSlots - 1);
  if (index >= slots_.size()) return none;
  const std::shared_ptr<Object>& object = slots_[index].object;
  return object && object->handle_ == handle ? object : none;
}

std::shared_ptr<Object> HandleTable::Remove(const void* handle) {
  if (!Find(handle)) return nullptr;
  const std::size_t index = reinterpret_cast<std::uintptr_t>(handle) & (kMaxSlots - 1);
  // First the step that can run out of memory.
  free_.push_back(static_cast<std::uint16_t>(index));
  Slot& slot = slots_[index];
  slot.generation = (slot.generation + 1) & kGenerationMask;
  return std::move(slot.object);
}

}  // namespace gfx
