#pragma once

#include "stage.h"

namespace sample {

// Each paints one kind of picture; the stage's moment and seed decide everything that varies.

// scenes_land.cpp
void MountainLake(Stage& stage);
void RainbowHills(Stage& stage);
void Balloons(Stage& stage);
void FieldRows(Stage& stage);
void SnowForest(Stage& stage);
void SnowMan(Stage& stage);

// scenes_sea.cpp
void Beach(Stage& stage);
void SunsetSea(Stage& stage);
void Harbour(Stage& stage);
void Aquarium(Stage& stage);

// scenes_trees.cpp
void CherryTrees(Stage& stage);
void MapleBranch(Stage& stage);
void TreeAvenue(Stage& stage);
void Bamboo(Stage& stage);

// scenes_flowers.cpp
void FlowerMeadow(Stage& stage);
void FlowerMacro(Stage& stage);
void Hydrangea(Stage& stage);
void Sunflowers(Stage& stage);

// scenes_stars.cpp
void MilkyWay(Stage& stage);
void MoonPampas(Stage& stage);

// scenes_night.cpp
void Fireworks(Stage& stage);
void NightSkyline(Stage& stage);
void Lanterns(Stage& stage);
void Concert(Stage& stage);
void WinterLights(Stage& stage);

// scenes_town.cpp
void RainStreet(Stage& stage);
void TrainWindow(Stage& stage);
void ShrineGate(Stage& stage);
void Pagoda(Stage& stage);

// scenes_outing.cpp
void CarpStreamers(Stage& stage);
void DogWalk(Stage& stage);

// scenes_table.cpp
void CoffeeCup(Stage& stage);
void FruitBowl(Stage& stage);
void BirthdayCake(Stage& stage);
void Breakfast(Stage& stage);

// scenes_home.cpp
void CatWindow(Stage& stage);
void BookLamp(Stage& stage);

}  // namespace sample
