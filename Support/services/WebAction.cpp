#include "Support/services/WebAction.h"

#include <algorithm>

namespace vemra {

namespace {

char ToLowerAscii(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool EqualIgnoringCase(const std::string& a, const std::string& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return ToLowerAscii(x) == ToLowerAscii(y); });
}

}  // namespace

CWebAction::CWebAction(const std::string& action, const std::string& target, int width, int height,
                       const std::string& frame)
    : action_(action), target_(target), width_(width), height_(height), frame_(frame) {}

bool CWebAction::operator==(const CWebAction& other) const {
  return EqualIgnoringCase(action_, other.action_) && EqualIgnoringCase(target_, other.target_) &&
         frame_ == other.frame_ && width_ == other.width_ && height_ == other.height_;
}

}  // namespace vemra
