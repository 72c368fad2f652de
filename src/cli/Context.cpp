#include "cli/Commands.h"
#include "interchange/ConvertCompany.h"
#include "platform/runtime/FileIdentity.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar::cli {

CompanySession& Context::Session() {
    if (session_ == nullptr) {
        const std::filesystem::path program = AppPath::ProgramFolder();
        const AppPath paths = AppPathOption.empty() ? AppPath::Of(program) : AppPath::At(AppPathOption, program);
        profile_.Load(paths.Profile());
        trace_ = OpenTrace(TracePath);
        session_ = std::make_unique<CompanySession>(paths, profile_);
        session_->SetChosenFile(OfferConversion);
        session_->SetTrace(trace_.get());
    }
    return *session_;
}

ADepre& Context::Engine() {
    if (engine_ == nullptr) {
        const AppPath& paths = Session().Paths();
        engine_ = std::make_unique<ADepre>([&paths](const std::string& table) { return paths.Find(table); });
        engine_->SetTrace(trace_.get());
    }
    return *engine_;
}

CompanySession& Context::Open(const std::filesystem::path& file) {
    RequireStandardOutputApart(file);
    if (!Session().OpenCompany(file, prompts_)) RefuseUnconverted(file);
    return Session();
}

void Context::RefuseUnconverted(const std::filesystem::path& file) {
    throw PlatformError(Failure::UnrecognizedFormat, FromUtf8(file.string()) + " was not converted and cannot be used as it is");
}

std::string FromArgument(const std::string& argument) {
    bool lossy = false;
    std::string text = FromUtf8(argument, &lossy);
    if (lossy) throw PlatformError(Failure::InvalidCall, "\"" + argument + "\" holds a character that a company file cannot");
    return text;
}

void SeekAsset(CompanySession& session, const std::string& argument) {
    recordset::Recordset& assets = session.AssetsRecordset();
    assets.Seek(FromArgument(argument));
    if (assets.NoMatch()) throw PlatformError(Failure::InvalidCall, "There is no asset \"" + FromArgument(argument) + "\"");
}

}  // namespace tallymar::cli
