#pragma once

#include <cstdint>
#include <string>

#include "Support/Export.h"

namespace vemra {

class INIWorker;

// The look and feel of a database's result pages (".lcl"). File names are kept as stored and as
// full paths under the folder of the .lcl file. Used by one thread at a time.
class SUPPORT_API CTavoFileLCL {
 public:
  // Missing keys take their defaults. Without "On" (neither "YES" nor "NO" counts as missing) the
  // personal profile is off, and its background and colour are cleared. Returns 1.
  int Load(const std::string& fileName);
  // Writes every key in the order that Load reads, a file name as stored and an empty value too.
  // Names stay as they are stored also under another folder. Stops and returns 0 at the first key
  // that cannot be written.
  int Save(const std::string& fileName);
  void Reset();

  // Full paths; empty when there is none. The setters take full paths and store them relative to
  // the folder of the .lcl file.
  const std::string& GetBackground() const { return background_.path; }
  void SetBackground(const std::string& path) { SetPicture(background_, path); }
  const std::string& GetSplash() const { return splash_.path; }
  void SetSplash(const std::string& path) { SetPicture(splash_, path); }
  const std::string& GetPersonalProfileBackground() const { return profileBackground_.path; }
  void SetPersonalProfileBackground(const std::string& path) {
    SetPicture(profileBackground_, path);
  }
  const std::string& GetAbout() const { return about_.path; }
  void SetAbout(const std::string& path) { SetPicture(about_, path); }
  const std::string& GetPartAbout() const { return about_.stored; }  // as stored

  int IsTiled() const { return tile_; }
  void SetTiled(int flag) { tile_ = flag; }
  const std::string& GetTitle() const { return title_; }
  void SetTitle(const std::string& title) { title_ = title; }
  const std::string& GetPrintHeader() const { return printHeader_; }
  void SetPrintHeader(const std::string& header) { printHeader_ = header; }
  int GetDisplayTime() const { return displayTime_; }  // of the splash picture, in seconds
  void SetDisplayTime(int seconds) { displayTime_ = seconds; }
  const std::string& GetLimitation() const { return layout_; }  // the personal profile's layout
  void SetLimitation(const std::string& layout) { layout_ = layout; }
  int IsPersonalProfileOn() const { return profileOn_; }
  void SetPersonalProfileOn(int flag) { profileOn_ = flag; }
  std::uint32_t GetPersonalProfileColor() const { return profileColor_; }
  void SetPersonalProfileColor(std::uint32_t color) { profileColor_ = color; }
  const std::string& GetRegistryString() const { return registryName_; }
  void SetRegistryString(const std::string& name) { registryName_ = name; }
  // The configuration file that owns the look and feel; not stored.
  const std::string& GetCFGPath() const { return cfgPath_; }
  void SetCFGPath(const std::string& path) { cfgPath_ = path; }

  // Between a stored name and a full path, by the folder of the .lcl file.
  std::string MakeAbsolutePath(const std::string& stored) const;
  std::string MakeRelativePath(const std::string& path) const;

 private:
  struct Picture {
    std::string stored;
    std::string path;
  };

  void SetFileName(const std::string& fileName);
  void SetPicture(Picture& picture, const std::string& path);
  int ReadPicture(INIWorker& reader, const char* section, const char* key, Picture& picture) const;
  void ReadPersonalProfile(INIWorker& reader);

  std::string folder_;  // of the .lcl file
  Picture background_;
  int tile_ = 0;
  std::string title_;
  std::string printHeader_;
  Picture splash_;
  int displayTime_ = 1;
  std::string layout_;
  int profileOn_ = 0;
  Picture profileBackground_;
  std::uint32_t profileColor_ = 0;
  Picture about_;
  std::string registryName_;
  std::string cfgPath_;
};

}  // namespace vemra
