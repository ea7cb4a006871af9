#include "HeadlinePlugin.h"

#include "Tables.h"
#include "Utf8.h"

CaptionPlugin::CaptionPlugin(BoardState& board) : BoardPlugin("WeatherCaption"), m_board(board) {
    setNotifyOnValueChange(1);
}

void CaptionPlugin::onDataChange(char* /*fieldName*/, char* value) {
    m_board.countHeadline();
    char path[] = "headline/caption";
    setFieldData(path, utf8::toUpper(value).data());
}

WordsPlugin::WordsPlugin(BoardState& board) : BoardPlugin("WeatherWords"), m_board(board) {
    setNotifyOnValueChange(1);
    convertBy(labelTable);
}

void WordsPlugin::onDataChange(char* /*fieldName*/, char* value) {
    m_board.countHeadline();
    char path[] = "headline/words";
    setFieldData(path, value);
}
