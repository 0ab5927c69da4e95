// Prints the text of HTML pages as the parser hands it over: reads paths from standard input, a
// line each, and writes each run of text, in windows-1252, on a line of its own, and a form feed
// after each page.
#include <algorithm>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <string>

#include "Support/text/Section.h"
#include "Support/text/THWrapper.h"
#include "programs/formats/CodePage.h"
#include "programs/formats/Html.h"

namespace vemra {
namespace {

class RunPrinter : public HtmlParser {
 public:
  explicit RunPrinter(TavoTHWrapper& wrapper) : HtmlParser(&wrapper, CodePage::Windows1252()) {
    EnableWrite(0);
  }

 protected:
  void HandleSection(TavoSection* section) override {
    const std::unique_ptr<TavoSection> owned(section);
    std::string run = section->GetContents();
    std::replace(run.begin(), run.end(), '\n', ' ');
    std::cout << run << '\n';
  }
};

void PrintRuns(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string page((std::istreambuf_iterator<char>(file)), {});
  TavoTHWrapper wrapper("", 0);  // no fields: no text is parted by them
  RunPrinter(wrapper).ParseDocument(std::move(page));
  std::cout << "\f\n";
}

}  // namespace
}  // namespace vemra

int main() {
  std::ios::sync_with_stdio(false);
  for (std::string path; std::getline(std::cin, path);) vemra::PrintRuns(path);
  return std::cout.flush() ? 0 : 1;
}
