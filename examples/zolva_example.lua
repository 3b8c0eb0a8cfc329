-- ZOLVA example: a cluster from the selected items, auditioned, prepared for a
-- render and restored, then exported with a one-group schema as Wwise Work Units
-- into a folder it creates next to the project file.
--
-- Try it on a copy of a project: it adds a cluster to the project's stored
-- clusters, and ending the audition unmutes every muted item in the project,
-- including items you muted yourself.
--
-- To run it: save the project, select a few media items, then
-- Actions > Show action list... > New action... > Load ReaScript..., choose
-- this file, and click Run.
--
-- Most ZOLVA calls used here answer a JSON text with "success"; a few answer
-- other things (the version is plain text, ZOLVA_Cluster_GetClusterData answers
-- nothing for an unknown cluster). The script checks every result and stops at
-- the first failure, telling which step failed.

local TITLE = "ZOLVA example"

-- Leave empty for ZOLVA's fixed Work Unit format (Wwise cannot open it), or
-- give the path of a Wwise 2023.1 or 2024.1 project, with forward slashes
-- (for example "C:/Game/Wwise/Game.wproj"), for Work Units that project opens.
local WWISE_PROJECT = ""

local function log(label, text)
  reaper.ShowConsoleMsg(label .. ": " .. tostring(text) .. "\n")
end

local function stop(message)
  log("Stopped", message)
  reaper.ShowMessageBox(message, TITLE, 0)
end

-- True when a JSON result reports success; otherwise tells the user and
-- gives false. `text` may be nil when a function answers nothing.
local function succeeded(step, text)
  log(step, text)
  if type(text) == "string" and text:find('"success":true', 1, true) then return true end
  local reason = type(text) == "string" and text:match('"error":"(.-)"}') or tostring(text)
  stop(step .. " failed: " .. reason)
  return false
end

-- A text as a JSON string: backslashes and quotes escaped.
local function json_text(text)
  return '"' .. text:gsub("\\", "\\\\"):gsub('"', '\\"') .. '"'
end

-- A number for JSON text: always with a decimal point, whatever the locale.
local function number(value)
  return (string.format("%.6f", value):gsub(",", "."))
end

local function run()
  -- 0. The extension must be loaded, the project saved, items selected.
  if not reaper.APIExists("ZOLVA_Cluster_AssociateSelectedItems") then
    stop("The ZOLVA extension is not loaded: put the reaper_zolva library into the UserPlugins folder "
      .. "of REAPER's resource path and restart REAPER.")
    return
  end
  reaper.ClearConsole()
  log("ZOLVA version", reaper.ZOLVA_Cluster_GetVersion())

  -- The project file's own path (GetProjectPath would give the recording folder).
  local _, project_file = reaper.EnumProjects(-1)
  local project_folder = project_file and project_file:match("^(.*)[/\\][^/\\]*$")
  if not project_folder or project_folder == "" then
    stop("The project is not saved yet. Save it first (File > Save project): the example writes its "
      .. "Wwise files into a folder next to the project file.")
    return
  end

  local count = reaper.CountSelectedMediaItems(0)
  if count == 0 then
    stop("Select the items that make up the cluster first.")
    return
  end
  local answer = reaper.ShowMessageBox("This example changes the open project: it adds a cluster, and "
    .. "ending its audition unmutes every muted item, yours included. Use a copy of your project.\n\n"
    .. "Continue?", TITLE, 4)
  if answer ~= 6 then return end  -- 6 = Yes

  -- The time span the selected items cover becomes the cluster's bounds.
  local first, last = math.huge, -math.huge
  for i = 0, count - 1 do
    local item = reaper.GetSelectedMediaItem(0, i)
    local position = reaper.GetMediaItemInfo_Value(item, "D_POSITION")
    local length = reaper.GetMediaItemInfo_Value(item, "D_LENGTH")
    first = math.min(first, position)
    last = math.max(last, position + length)
  end

  -- 1. The project's stored clusters first, so that saving keeps them; then a
  -- new cluster from the selection. A cluster the project does not know yet is
  -- created by the association; its bounds are set afterwards, so the items are
  -- associated without the time check.
  if not succeeded("Load clusters", reaper.ZOLVA_Cluster_LoadFromProject()) then return end
  local cluster = reaper.genGuid("")
  if not succeeded("Associate", reaper.ZOLVA_Cluster_AssociateSelectedItems(cluster, '{"time_bounded":false}')) then
    return
  end
  if not succeeded("Bounds", reaper.ZOLVA_Cluster_SetClusterBounds(cluster, first, last, first, last)) then return end
  local data = reaper.ZOLVA_Cluster_GetClusterData(cluster)
  if data == nil or data == "" then
    stop("Cluster data: the new cluster is not known")
    return
  end
  log("Cluster", data)
  -- IsItemInCluster answers the text "true" or "false", and both are true in a
  -- Lua `if`: compare the text.
  local _, item_guid = reaper.GetSetMediaItemInfo_String(reaper.GetSelectedMediaItem(0, 0), "GUID", "", false)
  local member = reaper.ZOLVA_Cluster_IsItemInCluster(item_guid, cluster)
  log("Membership", member)
  if member ~= "true" then
    stop("Membership: the first selected item is not in the new cluster")
    return
  end
  if not succeeded("Save clusters", reaper.ZOLVA_Cluster_SaveToProject()) then return end

  -- 2. Audition: only the cluster's items sound until the audition ends.
  if not succeeded("Audition", reaper.ZOLVA_Cluster_ActivateCluster(cluster, "")) then return end
  reaper.SetEditCurPos(first, true, false)
  reaper.OnPlayButton()
  reaper.ShowMessageBox("Playing the cluster alone. Press OK to stop and end the audition "
    .. "(every muted item in the project is unmuted).", TITLE, 0)
  reaper.OnStopButton()
  if not succeeded("End audition", reaper.ZOLVA_Cluster_DeactivateAllClusters()) then return end

  -- 3. A render: prepare (solo the cluster's items), render, restore the project.
  if not succeeded("Prepare render", reaper.ZOLVA_Cluster_PrepareClusterForRender(cluster, "")) then return end
  -- A render script renders here, for example the time selection from `first` to `last`.
  if not succeeded("Restore after render", reaper.ZOLVA_Cluster_RestoreAfterRender()) then return end

  -- 4. Wwise: one horizontal group holding the cluster, as Work Units in a
  -- folder next to the project file (the export creates it).
  local group = reaper.genGuid("")
  local schema = '{"projectName":"ZOLVA_Example",'
    .. '"clusters":[{"guid":"' .. cluster .. '","name":"Example cluster","parentGuid":"' .. group .. '",'
    .. '"startTime":' .. number(first) .. ',"endTime":' .. number(last) .. '}],'
    .. '"groups":[{"guid":"' .. group .. '","name":"Example group","type":"horizontal",'
    .. '"childGuids":["' .. cluster .. '"]}],'
    .. '"connections":[]}'
  if not succeeded("Transform", reaper.ZOLVA_Wwise_TransformSchema(schema)) then return end

  local folder = project_folder .. "/ZOLVA_Wwise_Example"
  local options = '{"copyAudioFiles":false}'
  if WWISE_PROJECT ~= "" then
    options = '{"copyAudioFiles":false,"format":"native","wwiseProject":' .. json_text(WWISE_PROJECT) .. '}'
  end
  if not succeeded("Work Units", reaper.ZOLVA_Wwise_GenerateWorkUnits(folder, options)) then return end

  -- ValidateWWU answers "success":true for a file it could read; "valid" tells
  -- whether the file is well-formed.
  local music = folder .. "/Interactive Music Hierarchy/ZOLVA_Example.wwu"
  local validation = reaper.ZOLVA_Wwise_ValidateWWU(music)
  if not succeeded("Validate", validation) then return end
  if not validation:find('"valid":true', 1, true) then
    stop("Validate: " .. music .. " is not well-formed: " .. (validation:match('"error":"(.-)"}') or validation))
    return
  end

  reaper.ShowMessageBox("Done. The Work Units are in\n" .. folder, TITLE, 0)
end

run()
