// What single commands do, one function a command or a few; the table is in dispatch.cpp. GUI thread, but
// where it says otherwise.
#pragma once

#include "app/app_parts.h"
#include "platform/window.h"

namespace kalmora {

// ---- the window
void ShowMainWindow(Window& window);
void HideMainWindow(const AppParts& parts, Window& window);
void ExitProgram(const AppParts& parts, Window& window);

// ---- music
void ToggleSound(const AppParts& parts);
void StepMusic(const AppParts& parts, int step);
void PlayOtherMusic(const AppParts& parts);  // a piece has ended: another one of the period

// ---- the period in view
void ShowSearch(const AppParts& parts);
void UpdateMonthInView(const AppParts& parts);  // any thread
void ImportFromCard(const AppParts& parts);
void SearchGoogleCalendar();
void OpenPeriodFolder();
void ResizeThumbnails(const AppParts& parts, int pixels);

// ---- slide show and neighbor window
void OpenSlideShowByCommand(const AppParts& parts);
void CloseSlideShowAndNeighbor(const AppParts& parts);
void SetSlideDirection(const AppParts& parts, SlideDirection direction);
void FlipSlideShowView(const AppParts& parts);
void DeleteSlide(const AppParts& parts);
void PasteIntoSlide(const AppParts& parts);
void GoToNextObject(const AppParts& parts);
void GoToPreviousObject(const AppParts& parts);
void RateObject(const AppParts& parts, EstimateType type);
// Turns the picture in the slide show or the neighbor window clockwise; waits for the tool.
void RotateObject(const AppParts& parts, int degrees);

// ---- the in-place editor
void OpenEditorAndPaste(const AppParts& parts);
void EditText(const AppParts& parts, Command command);
void CloseEditor(const AppParts& parts);

// ---- other programs and the web
void TakeScreenshot(const AppParts& parts, ScreenshotArea area);
void ScrapText(const AppParts& parts, ScrapSource source);
void RunGetter(const AppParts& parts, Getter getter);

}  // namespace kalmora
