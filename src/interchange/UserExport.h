#pragma once

#include "interchange/AssetExport.h"
#include "interchange/FieldDefinition.h"

namespace tallymar {

// "Total Assets = 3    Assets exported = 2"
std::string UserExportDoneText(const ExportCounts& counts);

// Writes one book's assets in the layout of the definition: the fields in the order of their positions, each ended by a comma
// below the definition's count and by a line end from it on. Nothing is quoted, so a comma in a text breaks its record.
// COMPAT: the last boxes are not those that their labels say: 37 is whether the asset was sold, 39 agricultural, 40 the
// additional first-year amount; the percentage cannot be exported, and box 28 writes the tax credit and what was used of it.
// "Company" writes the company file first, and the assets of book 1 into the asset file that belongs to it (AssetFileOf);
// BadFileName when the name holds no ASSETCTL. Other failures as WriteAssets.
ExportCounts UserExport(CompanySession& session, const FieldDefinition& definition, const ExportOptions& options,
                        const std::filesystem::path& file, Prompts& prompts);

}  // namespace tallymar
