#include "session/service_message_box.h"

#include "runtime/message_box.h"
#include "util/text_functions.h"

namespace rvl {

void ShowServiceMessageBox(std::vector<Text> params) {
    params.resize(3);
    const Text title = params[1].empty() ? State().ApplicationTitle : params[1];
    MsgBox(params[0], ParseLongOr(params[2], 0), title);
}

}  // namespace rvl
