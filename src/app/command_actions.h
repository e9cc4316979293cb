// What single commands do beyond one call into another room. GUI thread.
#pragma once

#include "platform/window.h"

namespace kalmora {

void ShowMainWindow(Window& window);
void HideMainWindow(Window& window);
void ExitProgram(Window& window);

void ToggleSound();
void StepMusic(int step);
void PlayOtherMusic();  // a piece has ended: another one of the period

void ShowSearch();
void UpdateMonthInView();
void SearchGoogleCalendar();
void OpenPeriodFolder();
void OpenSlideShowByCommand();
void CloseSlideShowAndNeighbor();
void GoToNextObject();
void GoToPreviousObject();
void RateObject(int estimateType);
void ResizeThumbnails(int pixels);

}  // namespace kalmora
