#include "Support/definition/FileLCL.h"

#include "Support/definition/StoredText.h"
#include "Support/foundation/INIWorker.h"
#include "Support/foundation/Paths.h"
#include "Support/platform/Process.h"

namespace vemra {
namespace {

constexpr char kBackground[] = "Background";
constexpr char kHeader[] = "Header";
constexpr char kSplash[] = "Splash Screen";
constexpr char kProfile[] = "Personal Profile";
constexpr char kAbout[] = "About";
constexpr char kRegistry[] = "Registry";

}  // namespace

void CTavoFileLCL::SetFileName(const std::string& fileName) {
  const std::size_t slash = fileName.rfind('\\');
  folder_ = slash == std::string::npos ? platform::GetCurrentFolder() : fileName.substr(0, slash);
}

std::string CTavoFileLCL::MakeAbsolutePath(const std::string& stored) const {
  return ConnectPaths(folder_, stored);
}

std::string CTavoFileLCL::MakeRelativePath(const std::string& path) const {
  return vemra::MakeRelativePath(path, folder_);
}

void CTavoFileLCL::SetPicture(Picture& picture, const std::string& path) {
  picture = {MakeRelativePath(path), path};
}

int CTavoFileLCL::ReadPicture(INIWorker& reader, const char* section, const char* key,
                              Picture& picture) const {
  picture = Picture();
  if (reader.GetString(section, key, picture.stored) == 0) return 0;
  picture.path = MakeAbsolutePath(picture.stored);
  return 1;
}

void CTavoFileLCL::Reset() {
  *this = CTavoFileLCL();
}

int CTavoFileLCL::Load(const std::string& fileName) {
  SetFileName(fileName);
  INIWorker reader(fileName);
  ReadPicture(reader, kBackground, "Path", background_);
  reader.GetBoolean(kBackground, "Tile", tile_, 0);
  reader.GetStringWithDefault(kHeader, "Title", title_, "");
  reader.GetStringWithDefault(kHeader, "Print", printHeader_, "");
  displayTime_ = 1;
  if (ReadPicture(reader, kSplash, "Path", splash_) != 0) {
    reader.GetNum(kSplash, "Display Time", displayTime_, 1);
  }
  ReadPersonalProfile(reader);
  ReadPicture(reader, kAbout, "Path", about_);
  reader.GetStringWithDefault(kRegistry, "Name", registryName_, "");
  return 1;
}

void CTavoFileLCL::ReadPersonalProfile(INIWorker& reader) {
  reader.GetStringWithDefault(kProfile, "Layout", layout_, "");
  profileOn_ = 0;
  profileBackground_ = Picture();
  profileColor_ = 0;
  if (reader.GetBoolean(kProfile, "On", profileOn_) == 0) return;
  ReadPicture(reader, kProfile, "Background", profileBackground_);
  reader.GetColor(kProfile, "Color", profileColor_);
}

int CTavoFileLCL::Save(const std::string& fileName) {
  INIWorker writer(fileName);
  INIWorker::Batch batch(writer);
  return PutText(writer, kBackground, "Path", background_.stored) != 0 &&
                 writer.PutBoolean(kBackground, "Tile", tile_) != 0 &&
                 PutText(writer, kHeader, "Title", title_) != 0 &&
                 PutText(writer, kHeader, "Print", printHeader_) != 0 &&
                 PutText(writer, kSplash, "Path", splash_.stored) != 0 &&
                 writer.PutNum(kSplash, "Display Time", displayTime_) != 0 &&
                 PutText(writer, kProfile, "Layout", layout_) != 0 &&
                 writer.PutBoolean(kProfile, "On", profileOn_) != 0 &&
                 PutText(writer, kProfile, "Background", profileBackground_.stored) != 0 &&
                 writer.PutColor(kProfile, "Color", profileColor_) != 0 &&
                 PutText(writer, kAbout, "Path", about_.stored) != 0 &&
                 PutText(writer, kRegistry, "Name", registryName_) != 0 && batch.Commit() != 0
             ? 1
             : 0;
}

}  // namespace vemra
