// The in-memory store for tests: one tree for the life of the object, a journal of every
// change in the order it was made, and a switch that makes key opens fail.
#pragma once

#include <string>
#include <vector>

#include "settings/settings_backend.h"
#include "settings/settings_tree.h"

class MemorySettingsBackend : public SettingsBackend {
 public:
  StatusCode OpenUserRoot(SettingsKeyPtr* root) override;

  // The tree as it stands (the current user's root key).
  SettingsNode& Root() { return root_; }

  // Every change so far, one line each: "create PATH" for each key creation request (also
  // of a key that exists), "set PATH:NAME" and "delete PATH:NAME" for each value written or
  // deleted (also a failed delete). PATH is the full key path from the root.
  const std::vector<std::u16string>& Journal() const { return journal_; }
  void ClearJournal() { journal_.clear(); }

  // From now on, every open and creation of a key below the root fails with the status of
  // this Windows error number (0: they work again).
  void FailKeyOpens(uint32_t systemError) { failingOpens_ = systemError; }

 private:
  friend class MemoryKey;
  SettingsNode root_;
  std::vector<std::u16string> journal_;
  uint32_t failingOpens_ = 0;
};
