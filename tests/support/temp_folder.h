// A fresh folder for one test, removed afterwards. Elsewhere than Windows it also becomes
// XDG_CONFIG_HOME and XDG_DATA_HOME, so settings and received files land inside it.
#pragma once

#include <string>

namespace testing_support {

class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    const std::string& Path() const { return path_; }

private:
    std::string path_;
    std::string savedConfig_, savedData_;
    bool hadConfig_ = false, hadData_ = false;
};

// A name no other test run uses (for registry keys and panel names).
std::string UniqueName(const std::string& prefix);

}  // namespace testing_support
