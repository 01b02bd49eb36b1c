// The About box (dialog 114) with the build's date and time.
#pragma once

void ShowAboutBox();
