#pragma once

namespace Tarvelon::metamodel::native {

class Instance;
class NativeModel;
struct Step;

/// Proof that an object has room for one word that is put without a step and is never removed, such as an id
/// or an empty list.
///
/// A journal relies on the free room of objects: an undo puts back values that steps have removed, and must
/// not fail. So a word without a step must not use that room. Instance::reserveLasting() makes separate room
/// for it and is the only function that can create this type; without it, no such word can be put.
class LastingRoom {
 public:
  LastingRoom(LastingRoom&&) noexcept = default;
  LastingRoom(const LastingRoom&) = delete;
  LastingRoom& operator=(const LastingRoom&) = delete;

 private:
  friend class Instance;
  LastingRoom() noexcept = default;
};

/// The permission to use the free room of objects. Only apply(), which applies steps, and a model without a
/// journal (NativeModel::unjournaled()) can create it.
class StepRoom {
 private:
  friend void apply(const Step& step) noexcept;
  friend class NativeModel;
  StepRoom() noexcept = default;
};

}  // namespace Tarvelon::metamodel::native
