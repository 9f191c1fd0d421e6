#pragma once
#include <cstdint>

#include "platform/zo_reference.h"

namespace ZoFlash {

class ZoSWFFile;

/// Anything that becomes a character in a file. Its character id belongs to
/// the file being written: the same entity written into a second file is
/// defined there again with that file's id.
class ZoSWFEntity : public ZoReferenceClass {
  public:
    /// Forgets the written state, so that the next file defines the entity
    /// again.
    virtual void InitialiseForRewriting();
    /// True when the entity has been defined in `file`.
    bool IsDefinedIn(const ZoSWFFile& file) const noexcept;
    /// The id in the file last written; 0 before the first definition.
    int GetCharacterID() const noexcept { return characterId_; }

  protected:
    /// Takes the next character id of `file` for this entity and marks it
    /// defined there. Called by Write overrides after their dependencies
    /// are defined and before the definition tag is added.
    int ClaimCharacterID(ZoSWFFile& file);

  private:
    uint64_t fileSerial_ = 0;
    int characterId_ = 0;
};

/// A character that can be placed in a frame.
class ZoSWFObject : public ZoSWFEntity {
  public:
    /// Defines the character (and everything it uses) in `file`.
    virtual void Write(ZoSWFFile& file) = 0;
};

}  // namespace ZoFlash
