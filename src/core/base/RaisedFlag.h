// SPDX-License-Identifier: MIT
#pragma once

namespace kestrin::core::base {

/// Keeps a flag true for as long as it lives, whichever way its scope is left. The flag must outlive it.
class RaisedFlag {
 public:
  explicit RaisedFlag(bool& flag) : m_flag(flag) { m_flag = true; }
  ~RaisedFlag() { m_flag = false; }
  RaisedFlag(const RaisedFlag&) = delete;
  RaisedFlag& operator=(const RaisedFlag&) = delete;

 private:
  bool& m_flag;
};

}  // namespace kestrin::core::base
