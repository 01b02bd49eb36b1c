// A fresh folder for one test, removed afterwards. Received files land in its "received"
// folder, and elsewhere than Windows it is XDG_CONFIG_HOME and XDG_DATA_HOME too, so settings
// stay inside it as well (on Windows they go to the registry under unique panel names).
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

// Removes the settings this run kept under unique panel names (on Windows they live in the
// registry of the test prefix, which outlives the run; elsewhere in temporary folders).
void RemoveThisRunsSettings();

}  // namespace testing_support
