#include "app/app_state.h"

AppState& App() {
    static AppState state;
    return state;
}
