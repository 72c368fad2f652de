#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/controls/CSForm.h"

namespace tallymar {

// What can be read of the system: a name and a text each, none of them about a client. What cannot be read is left out.
std::vector<std::pair<QString, QString>> SystemFacts();

// The facts as a page, for systems without a tool of their own.
class frmSystemInfo : public CSForm {
    Q_OBJECT

 public:
    explicit frmSystemInfo(const std::vector<std::pair<QString, QString>>& facts, QWidget* parent = nullptr);
};

}  // namespace tallymar
