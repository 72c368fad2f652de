#include <algorithm>
#include <charconv>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "cli/Commands.h"
#include "cli/Output.h"
#include "cli/TextTable.h"
#include "formoutput/FormFiles.h"
#include "formoutput/FormPagesPdf.h"
#include "formoutput/PageEdits.h"
#include "formoutput/PrintPCL.h"
#include "formoutput/PrinterSettings.h"
#include "platform/runtime/FileIdentity.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"
#include "platform/spooler/PrintQueues.h"

// The pages of the forms: as PDF, to a printer, their fields one by one.
namespace tallymar::cli {

namespace {

namespace fs = std::filesystem;

struct PageFlags {
    fs::path Folder;
    std::string Code;
    std::vector<std::string> Codes;
    fs::path Out;
    std::string To;
    std::string Use;
    bool Test = false;
    bool CutOff = false;
    std::vector<std::string> Fields;
};

constexpr const char* kToHelp = "A printer of this computer, socket://HOST:PORT, or a file";

constexpr std::string_view kSelectedPrinter = "printer";

PrintDestination Destination(const std::string& text) {
    return PrintDestination::Parse(text, IsPrintQueue);
}

void RunPdf(const PageFlags& flags, Context& context) {
    if (!IsStandardOutput(flags.Out)) {
        RequireOrdinaryOutput(flags.Out);
        RequireNoFormFile(flags.Out, context.Session().Paths(), flags.Folder);
    }
    const std::vector<std::string> files = FormPageFiles(flags.Folder, flags.Codes);
    TextOutput out(flags.Out);
    out.Write(FormPagesPdf(context.Session().Paths(), flags.Folder, files));
    out.Finish();
    out.PutInPlace();
}

// What the window tells and goes on from ends the command, unless that is wanted.
class PrintPrompts : public Prompts {
 public:
    PrintPrompts(Prompts& prompts, bool goesOn) : prompts_(prompts), goesOn_(goesOn) {}

    void Message(std::string_view text, std::string_view title, MessageKind kind) override {
        if (!goesOn_) throw PlatformError(Failure::InvalidCall, std::string(text));
        prompts_.Message(text, title, kind);
    }
    bool AskYesNo(std::string_view, std::string_view) override { return false; }
    std::optional<fs::path> AskOpenFile(const FileDialog&) override { return std::nullopt; }
    std::optional<fs::path> AskSaveFile(const FileDialog&) override { return std::nullopt; }
    void ProgressStart(std::int64_t) override {}
    void ProgressStep(std::int64_t) override {}

 private:
    Prompts& prompts_;
    bool goesOn_;
};

void RequireSent(const std::string& problem) {
    if (!problem.empty()) throw PlatformError(Failure::DeviceError, problem);
}

void RunPrint(const PageFlags& flags, Context& context) {
    const AppPath& paths = context.Session().Paths();
    const PagePrint print = PreparePrint(paths, flags.Folder, FormPageOf(FromArgument(flags.Code)));
    const PrintTarget target = LookAt(Destination(flags.To), paths, flags.Folder);
    RequireTakesPages(target);
    if (!target.TakesPcl) {
        SendAsPdf(target.To, paths, flags.Folder, print);
        std::cout << ToUtf8(target.Says) << '\n';
        return;
    }
    if (print.Overflows() && !flags.CutOff) {
        throw PlatformError(Failure::SubscriptOutOfRange, print.ValuesName + ": " + print.Warning() + " (form-pdf)");
    }
    if (!print.Unreadable.empty() && !flags.CutOff) throw PlatformError(Failure::PathAccess, print.Unreadable);
    Spooler spooler(target.To);
    PrintBuffer buffer;
    PrintPrompts prompts(context.Asking(), flags.CutOff);
    RequireSent(PrintPage(spooler, print, buffer, prompts));
    spooler.Close();
}

void RunSoftFonts(const PageFlags& flags, Context& context) {
    const AppPath& paths = context.Session().Paths();
    const PrintTarget target = LookAt(Destination(flags.To), paths, paths.Folder());
    RequireTakesSoftFonts(target);
    Spooler spooler(target.To);
    RequireSent(DownloadSoftFonts(spooler, paths));
    spooler.Close();
    std::cout << kSoftFontsDone << '\n';
}

void RunPrinter(const PageFlags& flags, Context& context) {
    const AppPath& paths = context.Session().Paths();
    const PrinterSettings saved = LoadPrinterSettings(paths.Folder());
    PrinterSettings settings = saved;
    if (!flags.Use.empty()) {
        settings.Printer = FromArgument(flags.Use);
        if (!IsPrintQueue(settings.Printer)) {
            throw PlatformError(Failure::InvalidCall, "This computer has no printer \"" + settings.Printer + "\"");
        }
    }
    if (flags.To == kSelectedPrinter) {
        settings.Raw = {};
    } else if (!flags.To.empty()) {
        settings.Raw = PrintDestination::Parse(flags.To, [](const std::string&) { return false; });
        // Other programs and other days begin in other folders.
        if (settings.Raw.To() == PrintDestination::Kind::File) {
            settings.Raw = PrintDestination::File(fs::absolute(settings.Raw.FilePath()).lexically_normal());
        }
    }
    if (flags.Test || settings.Raw != saved.Raw) {
        const PrintTarget target = LookAt(settings.RawTo(), paths, paths.Folder());
        if (flags.Test) {
            SendTestPage(target);
            std::cout << "A test page was sent to " << ToUtf8(target.To.Text()) << '\n';
        }
    }
    if (settings != saved) {
        paths.Prepare();
        SavePrinterSettings(paths.Folder(), settings);
    }
    using enum TextTable::Align;
    TextTable table({Left, Left, Left});
    table.AddRow({"Printer", "Description", "Selected"});
    for (const PrintQueue& queue : PrintQueues()) {
        table.AddRow({queue.Name, queue.Description, queue.Name == settings.Printer ? "yes" : ""});
    }
    table.Print(std::cout);
    const std::string to = settings.RawTo().Text();
    std::cout << "Form pages and soft fonts go to: " << (to.empty() ? "no printer" : ToUtf8(to)) << '\n';
}

// A page with its fields, as the viewer has it.
struct OpenPage {
    OpenPage(const PageFlags& flags, Context& context)
        : File(FormPageFileOf(FromArgument(flags.Code))),
          Path(FindValues(flags.Folder, File.Name())),
          Text(FormPageText::Read(*File.Page, Path)) {
        Edits.Show(File.Name(), ReadFormFields(FindLaserFile(context.Session().Paths(), File.Page->Code, "FPF")));
    }
    int Count() const { return static_cast<int>(Edits.FieldList().size()); }

    FormPageFile File;
    fs::path Path;
    FormPageText Text;
    PageEdits Edits{Text};
};

void RunFields(const PageFlags& flags, Context& context) {
    const OpenPage page(flags, context);
    using enum TextTable::Align;
    TextTable table({Right, Left, Right, Right, Right, Left});
    table.AddRow({"Field", "Kind", "Line", "Column", "Width", "Text"});
    for (int i = 0; i < page.Count(); ++i) {
        const FormField& field = page.Edits.FieldList()[static_cast<std::size_t>(i)];
        table.AddRow({std::to_string(i + 1), field.IsAmount ? "amount" : "text", std::to_string(field.Line),
                      std::to_string(field.Column + 1), std::to_string(field.Width), page.Edits.Get(i)});
    }
    table.Print(std::cout);
}

// "12=1,234.50"
std::pair<int, std::string> ParseChange(const std::string& argument, int count) {
    const std::size_t equals = argument.find('=');
    int number = 0;
    const char* const end = argument.data() + std::min(equals, argument.size());
    const auto [at, error] = std::from_chars(argument.data(), end, number);
    if (equals == std::string::npos || error != std::errc() || at != end || number < 1 || number > count) {
        throw PlatformError(Failure::InvalidCall, "\"" + argument + "\": write FIELD=TEXT, the field a number from 1 to " +
                                                      std::to_string(count) + " (form-fields lists them)");
    }
    return {number - 1, FromArgument(argument.substr(equals + 1))};
}

void RunSet(const PageFlags& flags, Context& context) {
    OpenPage page(flags, context);
    for (const std::string& argument : flags.Fields) {
        const auto [field, text] = ParseChange(argument, page.Count());
        RequireFits(page.Edits.FieldList()[static_cast<std::size_t>(field)], text);
        page.Edits.Store(field, text);
    }
    FileReplacement file(page.Path);
    file.Write(page.Text.ToFile());
    file.Commit();
}

}  // namespace

void AddFormPdfCommand(CLI::App& app, Context& context) {
    auto flags = std::make_shared<PageFlags>();
    CLI::App* command = app.add_subcommand("form-pdf", "The pages of a folder over their blank forms, as one PDF");
    command->add_option("DIR", flags->Folder, "Folder of the pages")->required()->check(CLI::ExistingDirectory);
    command->add_option("--out", flags->Out, "File to write; - is standard output")->required();
    command->add_option("--page", flags->Codes, "Only these pages: 245621, 2D1, 28824102 ...");
    command->callback([flags, &context] { RunPdf(*flags, context); });
}

void AddFormPrintCommand(CLI::App& app, Context& context) {
    auto flags = std::make_shared<PageFlags>();
    CLI::App* command = app.add_subcommand("form-print", "Send a page to a PCL printer; of Form 8824 its first file");
    command->add_option("DIR", flags->Folder, "Folder of the pages")->required()->check(CLI::ExistingDirectory);
    command->add_option("CODE", flags->Code, "Page: 245621, 2D1 ...")->required();
    command->add_option("--to", flags->To, kToHelp)->required();
    command->add_flag("--cut-off", flags->CutOff, "Print as much as fits of a page that is too long for a print");
    command->callback([flags, &context] { RunPrint(*flags, context); });
}

void AddSoftFontsCommand(CLI::App& app, Context& context) {
    auto flags = std::make_shared<PageFlags>();
    CLI::App* command = app.add_subcommand("soft-fonts", "Download the eight fonts of the forms into a PCL printer");
    command->add_option("--to", flags->To, kToHelp)->required();
    command->callback([flags, &context] { RunSoftFonts(*flags, context); });
}

void AddPrinterCommand(CLI::App& app, Context& context) {
    auto flags = std::make_shared<PageFlags>();
    CLI::App* command = app.add_subcommand("printer", "List the printers and choose where the program prints to");
    command->add_option("--use", flags->Use, "The program's printer from now on");
    command->add_option(
        "--raw-to", flags->To,
        "Where form pages and soft fonts go from now on: printer (the selected one), socket://HOST:PORT, or a file");
    command->add_flag("--test", flags->Test, "Send a test page there; what was chosen is kept only when it could be sent");
    command->callback([flags, &context] { RunPrinter(*flags, context); });
}

void AddFormFieldsCommand(CLI::App& app, Context& context) {
    auto flags = std::make_shared<PageFlags>();
    CLI::App* command = app.add_subcommand("form-fields", "List the fields of a page with what stands in them");
    command->add_option("DIR", flags->Folder, "Folder of the pages")->required()->check(CLI::ExistingDirectory);
    command->add_option("CODE", flags->Code, "Page: 245621, 2D1, 28824102 ...")->required();
    command->callback([flags, &context] { RunFields(*flags, context); });
}

void AddFormSetCommand(CLI::App& app, Context& context) {
    auto flags = std::make_shared<PageFlags>();
    CLI::App* command = app.add_subcommand("form-set", "Put texts into fields of a page, in its file");
    command->add_option("DIR", flags->Folder, "Folder of the pages")->required()->check(CLI::ExistingDirectory);
    command->add_option("CODE", flags->Code, "Page: 245621, 2D1, 28824102 ...")->required();
    command->add_option("FIELD=TEXT", flags->Fields, "Number of the field, as form-fields has it, and its text")->required();
    command->callback([flags, &context] { RunSet(*flags, context); });
}

}  // namespace tallymar::cli
