-- ZOLVA example: a cluster from the selected items, auditioned, prepared for a
-- render and restored, then exported with a one-group schema as Wwise Work Units
-- into a folder next to the project.
--
-- Select a few media items, then run this script from the Actions list
-- (Actions > Show action list > New action > Load ReaScript).
-- Every ZOLVA call answers a JSON text; the script prints each one.

local TITLE = "ZOLVA example"

local function log(label, text)
  reaper.ShowConsoleMsg(label .. ": " .. tostring(text) .. "\n")
end

local function succeeded(json)
  return type(json) == "string" and json:find('"success":true', 1, true) ~= nil
end

-- A number for JSON text: always with a decimal point, whatever the locale.
local function number(value)
  return (string.format("%.6f", value):gsub(",", "."))
end

-- 0. The extension must be loaded.
if not reaper.APIExists("ZOLVA_Cluster_AssociateSelectedItems") then
  reaper.ShowMessageBox("The ZOLVA extension is not loaded: install reaper_zolva in REAPER's "
    .. "UserPlugins folder and restart REAPER.", TITLE, 0)
  return
end
reaper.ClearConsole()
log("ZOLVA version", reaper.ZOLVA_Render_GetVersion())

local count = reaper.CountSelectedMediaItems(0)
if count == 0 then
  reaper.ShowMessageBox("Select the items that make up the cluster first.", TITLE, 0)
  return
end

-- The time span the selected items cover becomes the cluster's bounds.
local first, last = math.huge, -math.huge
for i = 0, count - 1 do
  local item = reaper.GetSelectedMediaItem(0, i)
  local position = reaper.GetMediaItemInfo_Value(item, "D_POSITION")
  local length = reaper.GetMediaItemInfo_Value(item, "D_LENGTH")
  first = math.min(first, position)
  last = math.max(last, position + length)
end

-- 1. A new cluster from the selection. A cluster the project does not know yet
-- is created by the association; its bounds are set afterwards, so the items
-- are associated without the time check.
local cluster = reaper.genGuid("")
local associated = reaper.ZOLVA_Cluster_AssociateSelectedItems(cluster, '{"time_bounded":false}')
log("Associate", associated)
if not succeeded(associated) then return end
log("Bounds", reaper.ZOLVA_Cluster_SetClusterBounds(cluster, first, last, first, last))
log("Cluster", reaper.ZOLVA_Cluster_GetClusterData(cluster))
log("Save", reaper.ZOLVA_Cluster_SaveToProject())

-- 2. Audition: only the cluster's items sound until the clusters are deactivated.
log("Activate", reaper.ZOLVA_Cluster_ActivateCluster(cluster, ""))
reaper.SetEditCurPos(first, true, false)
reaper.OnPlayButton()
reaper.ShowMessageBox("Playing the cluster alone. Press OK to stop and unmute the rest.", TITLE, 0)
reaper.OnStopButton()
log("Deactivate", reaper.ZOLVA_Cluster_DeactivateAllClusters())

-- 3. A render: prepare (solo the cluster's items), render, restore the project.
log("Prepare render", reaper.ZOLVA_Cluster_PrepareClusterForRender(cluster, ""))
-- A render script renders here, for example the time selection from `first` to `last`.
log("Restore", reaper.ZOLVA_Cluster_RestoreAfterRender())

-- 4. Wwise: one horizontal group holding the cluster, as Work Units in a folder
-- under the project's media path.
local group = reaper.genGuid("")
local schema = '{"projectName":"ZOLVA_Example",'
  .. '"clusters":[{"guid":"' .. cluster .. '","name":"Example cluster","parentGuid":"' .. group .. '",'
  .. '"startTime":' .. number(first) .. ',"endTime":' .. number(last) .. '}],'
  .. '"groups":[{"guid":"' .. group .. '","name":"Example group","type":"horizontal",'
  .. '"childGuids":["' .. cluster .. '"]}],'
  .. '"connections":[]}'
local transformed = reaper.ZOLVA_Wwise_TransformSchema(schema)
log("Transform", transformed)
if not succeeded(transformed) then return end
local folder = reaper.GetProjectPath() .. "/ZOLVA_Wwise_Example"
log("Work Units", reaper.ZOLVA_Wwise_GenerateWorkUnits(folder, '{"copyAudioFiles":false}'))
log("Validate", reaper.ZOLVA_Wwise_ValidateWWU(folder .. "/Interactive Music Hierarchy/ZOLVA_Example.wwu"))
