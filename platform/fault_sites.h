// Every place that raises the internal-fault box, "At <line> file <file>, val=<value>": the
// line and the source name the box shows. Support staff read these numbers off a user's
// screen, so each site keeps its number for good and every number is written only here.
#pragma once

namespace fault {

struct Site {
    long line;
    const char* file;
};

inline constexpr const char* kShellFile = "tremolanth22";     // start-up, device list, screen
inline constexpr const char* kPanelFile = "controllist";      // the panel's rows and keys
inline constexpr const char* kLinkFile = "tmqbthppcvcomclt";  // the link and the store

// Start-up and the device list.
inline constexpr Site kLinkCreate{284, kShellFile};
inline constexpr Site kLinkDestroy{330, kShellFile};
inline constexpr Site kRescanFailed{523, kShellFile};

// The panel screen and its rows.
inline constexpr Site kRestartFailed{319, kPanelFile};
inline constexpr Site kMessageActivated{1045, kPanelFile};
inline constexpr Site kMessageRow{1615, kPanelFile};

// The receive worker.
inline constexpr Site kMarkerRead{362, kLinkFile};
inline constexpr Site kHeaderRead{384, kLinkFile};
inline constexpr Site kPanelFailed{447, kLinkFile};
inline constexpr Site kValuesFailed{470, kLinkFile};
inline constexpr Site kLayoutFailed{493, kLinkFile};
inline constexpr Site kFileLinkClosed{520, kLinkFile};
inline constexpr Site kFileFailed{527, kLinkFile};
inline constexpr Site kUnknownType{547, kLinkFile};
inline constexpr Site kSettingsRefused{566, kLinkFile};  // the store is full or failed

// Records of a panel description.
inline constexpr Site kTextWithoutMaximum{1078, kLinkFile};
inline constexpr Site kDateTimeSize{1238, kLinkFile};
inline constexpr Site kDateTimeWithoutFormat{1270, kLinkFile};
inline constexpr Site kNumberSize{1314, kLinkFile};
inline constexpr Site kPasswordSize{1641, kLinkFile};
inline constexpr Site kListSize{1704, kLinkFile};

// Value updates from the device.
inline constexpr Site kFilesValue{2195, kLinkFile};
inline constexpr Site kUpdateInvalidType{2198, kLinkFile};
inline constexpr Site kImageValue{2301, kLinkFile};

// The control store.
inline constexpr Site kSetInvalidType{2963, kLinkFile};
inline constexpr Site kGetInvalidType{3226, kLinkFile};
inline constexpr Site kFlagsInvalidType{3298, kLinkFile};

// Value messages to the device.
inline constexpr Site kChartNotSendable{3402, kLinkFile};
inline constexpr Site kSendInvalidType{3424, kLinkFile};
inline constexpr Site kImageNotPressable{3460, kLinkFile};

}  // namespace fault
