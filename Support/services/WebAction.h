#pragma once

#include <string>

#include "Support/Export.h"

namespace vemra {

// What a button on a search form does: one of the named actions, and the place where its result is
// shown.
class SUPPORT_API CWebAction {
 public:
  static constexpr const char* SEARCH = "Search";
  static constexpr const char* RESET_FORM = "Reset Form";
  static constexpr const char* OPEN_DICTIONARY = "Open Dictionary";
  static constexpr const char* OPEN_PROX_ASSISTANT = "Proximity Assistant";
  static constexpr const char* OPEN_URL = "Open URL";

  CWebAction() = default;  // no action
  explicit CWebAction(const std::string& action, const std::string& target = {}, int width = -1,
                      int height = -1, const std::string& frame = {});

  const std::string& GetAction() const { return action_; }
  void SetAction(const std::string& action) { action_ = action; }
  // Target (a page or an address), window size in pixels (-1: not given) and frame are carried for
  // the page that runs the action.
  const std::string& GetTarget() const { return target_; }
  void SetTarget(const std::string& target) { target_ = target; }
  int GetWidth() const { return width_; }
  void SetWidth(int width) { width_ = width; }
  int GetHeight() const { return height_; }
  void SetHeight(int height) { height_ = height; }
  const std::string& GetFrame() const { return frame_; }
  void SetFrame(const std::string& frame) { frame_ = frame; }

  int IsSearchAction() const { return action_ == SEARCH; }
  int IsResetAction() const { return action_ == RESET_FORM; }
  int IsOpenDictionaryAction() const { return action_ == OPEN_DICTIONARY; }
  int IsProxAssistantAction() const { return action_ == OPEN_PROX_ASSISTANT; }
  int IsOpenUrlAction() const { return action_ == OPEN_URL; }
  void SetSearchAction() { action_ = SEARCH; }
  void SetResetAction() { action_ = RESET_FORM; }
  void SetOpenDictionaryAction() { action_ = OPEN_DICTIONARY; }
  void SetProxAssistantAction() { action_ = OPEN_PROX_ASSISTANT; }
  void SetOpenUrlAction() { action_ = OPEN_URL; }

  // Action and target without regard to ASCII case, the rest exactly.
  bool operator==(const CWebAction& other) const;

 private:
  std::string action_;
  std::string target_;
  int width_ = -1;
  int height_ = -1;
  std::string frame_;
};

}  // namespace vemra
