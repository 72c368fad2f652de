#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <QImage>

#include "support/Files.h"
#include "support/Output.h"
#include "support/TempFolder.h"

namespace tallymar::test {

// Another's PCL printer (tools/pcl-judge), as an independent judge of what a stream draws.
class Judge {
 public:
    Judge() {
        home_ = OutputOf(TALLYMAR_SOURCE_DIR "/tools/pcl-judge --find");
        while (!home_.empty() && home_.back() == '\n') home_.pop_back();
    }

    bool IsThere() const { return !home_.empty(); }

    struct Result {
        std::string Complaints;
        std::vector<QImage> Sheets;  // at 300 dots to the inch, black and white
    };
    Result Print(const std::string& stream) const {
        const TempFolder folder;
        WriteAll(folder / "job.pcl", stream);
        const std::string command = "PCLFONTSOURCE='" + home_ + "/fonts/' '" + home_ +
                                    "/gpcl6' -dNOPAUSE -dBATCH -sDEVICE=pngmono -r300 -sOutputFile='" +
                                    (folder / "sheet-%d.png").string() + "' '" + (folder / "job.pcl").string() + "' > '" +
                                    (folder / "log").string() + "' 2>&1";
        Result result;
        const int status = std::system(command.c_str());
        result.Complaints = ReadAll(folder / "log");
        if (status != 0) result.Complaints += "\nended with " + std::to_string(status);
        for (int sheet = 1;; ++sheet) {
            QImage image(QString::fromStdString((folder / ("sheet-" + std::to_string(sheet) + ".png")).string()));
            if (image.isNull()) return result;
            result.Sheets.push_back(image.convertToFormat(QImage::Format_Grayscale8));
        }
    }

 private:
    std::string home_;
};

}  // namespace tallymar::test
