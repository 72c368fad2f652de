#pragma once

#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

#include "irsforms/FormLines.h"
#include "irsforms/WorkFile.h"
#include "platform/runtime/JsonWriter.h"

namespace tallymar {

// An amount as data: "24000.00"; what is finer than a cent keeps its decimals.
std::string DecimalText(CurrencyAmount amount);

// The lines that are not 0, by their numbers, except for those numbers that are no lines.
void WriteJsonLines(JsonWriter& json, std::string_view name, const FormLines& lines, std::span<const int> except = {});

template <typename Row>
void WriteJsonCells(JsonWriter& json, const Row& row, std::span<const RowColumn<Row>> columns) {
    for (const RowColumn<Row>& column : columns) {
        std::visit(
            [&](auto member) {
                if constexpr (std::is_same_v<decltype(member), std::string Row::*>) {
                    json.Text(column.Name, row.*member);
                } else {
                    json.Text(column.Name, DecimalText(row.*member));
                }
            },
            column.Cell);
    }
}

// A row of a form's table as a JSON object, led by the asset that it comes from.
template <typename Row>
void WriteJsonRow(JsonWriter& json, const Row& row, std::span<const RowColumn<Row>> columns) {
    json.BeginObject();
    json.Text("AssetNum", row.AssetNum);
    WriteJsonCells(json, row, columns);
    json.End();
}

template <typename Row, typename Rows>
void WriteJsonTable(JsonWriter& json, std::string_view name, const Rows& rows, std::span<const RowColumn<Row>> columns) {
    json.BeginArray(name);
    for (const Row& row : rows) WriteJsonRow(json, row, columns);
    json.End();
}

}  // namespace tallymar
