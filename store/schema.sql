-- The task database. It is made empty by the build and never altered by the program.
--
-- Texts compare without regard to case. Names carry no unique key: the program keeps them unique
-- where it means to. Day, hour and minute carry no range checks, so that the schedule has to cope
-- with any number.

CREATE TABLE Opdrachtgegevens (                -- one row per task
    Opdrachtnaam   VARCHAR(20)  COLLATE NOCASE,  -- name of the task
    Download_adres VARCHAR(100) COLLATE NOCASE,  -- address that it is fetched from
    Filenaam       VARCHAR(50)  COLLATE NOCASE,  -- name under which the file is kept
    Minuten        SMALLINT,                     -- minute of the hour, 0 to 59
    Aktief         BOOLEAN NOT NULL DEFAULT 0    -- 1: the task is scheduled
                   CHECK (Aktief IN (0, 1))
);

CREATE TABLE Tijden (                          -- one row per download slot of a task
    Opdrachtnaam   VARCHAR(20)  COLLATE NOCASE,  -- name of the task that the slot belongs to
    Dagen          SMALLINT,                     -- day of the week, 1 = Monday to 7 = Sunday
    Uren           SMALLINT                      -- hour of the day, 0 to 23
);
