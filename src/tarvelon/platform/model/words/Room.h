#pragma once

namespace Tarvelon::metamodel::native {

class Instance;
class NativeModel;
struct Step;

/// Room for one word of an object that is put without a step and stays, as an id or an empty list.
///
/// A journal counts on the free room of objects: an undo puts back what a step took out, and must not fail.
/// So a word that no step knows of needs room that is not among the free one, which
/// Instance::reserveLasting() makes. Only there can this type be made, and without it no such word can be
/// put.
class LastingRoom {
 public:
  LastingRoom(LastingRoom&&) noexcept = default;
  LastingRoom(const LastingRoom&) = delete;
  LastingRoom& operator=(const LastingRoom&) = delete;

 private:
  friend class Instance;
  LastingRoom() noexcept = default;
};

/// The right to use the free room of objects: of apply(), which makes and takes back steps, and of a model
/// without a journal (NativeModel::unjournaled()).
class StepRoom {
 private:
  friend void apply(const Step& step) noexcept;
  friend class NativeModel;
  StepRoom() noexcept = default;
};

}  // namespace Tarvelon::metamodel::native
